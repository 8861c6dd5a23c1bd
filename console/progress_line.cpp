// SPDX-License-Identifier: MIT
// The two ways of showing progress.
#include "console/progress_line.h"

#include <algorithm>
#include <utility>

namespace velquinctl {
namespace {

constexpr double kPlainSeconds = 1.0;

/// Characters, not bytes: the bytes that continue a UTF-8 character take no column.
size_t Columns(const std::string& text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

}  // namespace

ProgressLine::ProgressLine(ProgressMode mode, Writer write)
    : mode_(mode == ProgressMode::kAuto ? ProgressMode::kPlain : mode), write_(std::move(write)) {}

ProgressLine::~ProgressLine() {
  End();
}

void ProgressLine::Show(double seconds, const std::string& text) {
  if (mode_ == ProgressMode::kLive) {
    Redraw(text);
  } else if (mode_ == ProgressMode::kPlain &&
             (lastPlain_ < 0.0 || seconds - lastPlain_ >= kPlainSeconds)) {
    lastPlain_ = seconds;
    write_(text + '\n');
  }
}

void ProgressLine::Keep(const std::string& text) {
  if (mode_ != ProgressMode::kLive) {
    write_(text + '\n');
    return;
  }
  Redraw(text);
  End();
}

void ProgressLine::End() {
  if (shownWidth_ > 0) write_("\n");
  shownWidth_ = 0;
}

void ProgressLine::Redraw(const std::string& text) {
  const size_t width = Columns(text);
  const size_t wipe = shownWidth_ > width ? shownWidth_ - width : 0;
  write_('\r' + text + std::string(wipe, ' '));
  shownWidth_ = std::max<size_t>(width, 1);
}

}  // namespace velquinctl
