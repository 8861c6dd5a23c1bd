// SPDX-License-Identifier: MIT
#include "core/protocol/reply.h"

#include "core/util/string_sep.h"

namespace {

// @return whether the value of a reply has exactly so many fields.
bool SplitValue(const CString& reply, int64_t count, CStringSep& fields) {
  fields.Set(ReplyValue(reply), ",", 0);
  return fields.GetCount() == count;
}

}  // namespace

bool DecodeSite(const CString& reply, SiteReply& site) {
  CStringSep fields;
  if (!SplitValue(reply, 3, fields)) return false;
  site = {fields.atof(1, 0.0), fields.atof(0, 0.0), fields.atoi(2, 0)};
  return true;
}

bool DecodeModel(const CString& reply, ModelReply& model) {
  CStringSep fields;
  if (!SplitValue(reply, 3, fields)) return false;
  model = {fields.atoi(0, 0), fields.atof(1, 0.0), fields.atof(2, 0.0)};
  return true;
}

bool DecodeUtc(const CString& reply, SiteTime& time) {
  CStringSep fields;
  if (!SplitValue(reply, 6, fields)) return false;
  time = {fields.atoi(0, 0),
          fields.atoi(1, 0),
          fields.atoi(2, 0),
          fields.atoi(3, 0),
          fields.atoi(4, 0),
          static_cast<double>(fields.atoi(5, 0)),
          0.0};
  return true;
}
