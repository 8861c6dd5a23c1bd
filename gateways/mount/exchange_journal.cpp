// SPDX-License-Identifier: MIT
#include "gateways/mount/exchange_journal.h"

#include "core/net/time_out_journal.h"

namespace velquin {

void ExchangeJournal::Record(const std::string& command, int32_t startMs, const char* reason) {
  const std::lock_guard guard(lock_);
  entries_.push_back({command, startMs, reason});
  if (entries_.size() > kMost) entries_.pop_front();
}

size_t ExchangeJournal::Count() const {
  const std::lock_guard guard(lock_);
  return entries_.size();
}

void ExchangeJournal::Write(const std::string& folder, const std::string& prefix) const {
  std::deque<Entry> entries;
  {
    const std::lock_guard guard(lock_);
    entries = entries_;
  }
  TimeOutErrorList list;
  for (const Entry& entry : entries) {
    TimeOutErrorW error = {entry.command.c_str(), entry.startMs, entry.reason};
    list.Add(error);
  }
  WriteTimeOutJournal(list, folder.c_str(), prefix.c_str());
}

}  // namespace velquin
