// SPDX-License-Identifier: MIT
// Opening and closing a session, the version, and the exchange that all operations use.
#include "core/log/device_log.h"
#include "core/net/time_out_journal.h"
#include "core/protocol/command_text.h"
#include "core/protocol/reply.h"
#include "core/protocol/vq_ctrl_w.h"

namespace {

constexpr int kReplyTimeOutMs = 500;

}  // namespace

CVQCtrlW::CVQCtrlW() : logger(logging::orlin::OpenDeviceLog()) {}

CVQCtrlW::~CVQCtrlW() {
  Close();
}

int CVQCtrlW::Open(const char* newHost, int32_t newPort, int32_t newOpenArg) {
  host = newHost;
  port = newPort;
  openArg = newOpenArg;
  Log("Open:");
  // A link that is still connected refuses both, and the probe uses the old connection.
  link.SetTimeOut(kReplyTimeOutMs);
  link.Open(host, CUdpLink::kDefaultPort);
  if (link.CheckUnit() == 0) return 0;
  CString reply = link.Query(command_text::kVersionQuery);
  // The controller has answered once; losing this query does not end the session.
  if (reply.IsEmpty()) return 1;
  version = reply;
  reply = link.Query(command_text::kModelQuery);
  return reply.IsEmpty() ? 0 : ReadModel(reply);
}

void CVQCtrlW::Close() noexcept {
  try {
    Log("Close");
  } catch (...) {
    // No memory, or no lock: the log misses a line. The link closes anyway. The worker, which
    // closes it last, does not catch exceptions.
  }
  link.Close();
}

int CVQCtrlW::GetVersion(CString& versionText, CString& reply) {
  if (Exchange(command_text::kVersionQuery, "$SYVER=", reply) == 0) return 0;
  versionText = ReplyValue(reply);
  return 1;
}

void CVQCtrlW::WriteTimeOutErrors(const char* logFolder, const char* logPrefix) {
  TimeOutErrorList errors;
  link.CopyTimeOutErrors(errors);
  WriteTimeOutJournal(errors, logFolder, logPrefix);
}

int CVQCtrlW::Exchange(const CString& command, const char* prefix, CString& reply) {
  reply = link.Query(command);
  return HasReplyPrefix(reply, prefix) ? 1 : 0;
}

int CVQCtrlW::ReadModel(const CString& reply) {
  ModelReply model;
  if (!DecodeModel(reply, model)) return 0;
  modelA = model.a;
  modelB = model.b;
  modelC = model.c;
  return 1;
}

void CVQCtrlW::Log(const char* event) {
  if (logger) logger->Log("INFO", logging::orlin::Logger::MakeMessage(event));
}
