// SPDX-License-Identifier: MIT
// What JsonObject writes, read by another JSON implementation.
#include "console/json_object.h"

#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

namespace velquinctl {
namespace {

using nlohmann::json;

json Read(const JsonObject& object) {
  return json::parse(object.Text());
}

TEST(JsonObject, KeepsValuesAndTypes) {
  const json read = Read(JsonObject()
                             .Add("text", "abc")
                             .Add("whole", -7)
                             .Add("yes", true)
                             .Add("no", false)
                             .AddNull("nothing")
                             .Add("number", 83.6329167));
  EXPECT_EQ(read["text"], "abc");
  EXPECT_EQ(read["whole"], -7);
  EXPECT_EQ(read["yes"], true);
  EXPECT_EQ(read["no"], false);
  EXPECT_TRUE(read["nothing"].is_null());
  EXPECT_DOUBLE_EQ(read["number"].get<double>(), 83.6329167);
}

TEST(JsonObject, EscapesWhatTextsMayHold) {
  const std::string text = "\"quoted\" C:\\path\\\n\t\x01 \u671b\u9060\u93e1";
  EXPECT_EQ(Read(JsonObject().Add(text, text))[text], text);
}

TEST(JsonObject, NumbersAreAlwaysNumbersOrNull) {
  const json read = Read(JsonObject()
                             .Add("zero", 0.0)
                             .Add("minusZero", -1e-12)
                             .Add("whole", 300.0)
                             .Add("huge", 1e300)
                             .Add("nan", std::nan(""))
                             .Add("infinite", HUGE_VAL));
  EXPECT_EQ(read["zero"], 0.0);
  EXPECT_EQ(JsonObject().Add("n", -1e-12).Text(), "{\"n\": 0.0}");
  EXPECT_EQ(read["whole"], 300.0);
  EXPECT_DOUBLE_EQ(read["huge"].get<double>(), 1e300);
  EXPECT_TRUE(read["nan"].is_null());
  EXPECT_TRUE(read["infinite"].is_null());
}

TEST(JsonObject, AppendsInOrderOnOneLine) {
  JsonObject object;
  object.Append(JsonObject().Add("a", 1)).Append(JsonObject()).Append(JsonObject().Add("b", 2));
  EXPECT_EQ(object.Text(), "{\"a\": 1, \"b\": 2}");
  EXPECT_EQ(JsonObject().Text(), "{}");
}

}  // namespace
}  // namespace velquinctl
