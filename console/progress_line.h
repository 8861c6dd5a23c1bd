// SPDX-License-Identifier: MIT
// A line that tells how far something is: redrawn in place for a person, or now and then a line of
// its own for a log. Times are injected; one thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace velquinctl {

enum class ProgressMode {
  kAuto,   ///< live on a terminal, plain elsewhere
  kLive,   ///< one line, redrawn with a carriage return
  kPlain,  ///< a line a second
  kNone,
};

class ProgressLine {
 public:
  using Writer = std::function<void(std::string_view)>;

  /// @param mode kAuto counts as kPlain: whoever knows the terminal decides before
  /// @param write receives the characters, to be shown at once
  ProgressLine(ProgressMode mode, Writer write);
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  ~ProgressLine();

  /// Shows a text, or leaves it out when a plain line was written less than a second ago.
  /// @param seconds time of the text, never going back
  void Show(double seconds, const std::string& text);

  /// Writes a text that stays: over the redrawn line, or as a line of its own.
  void Keep(const std::string& text);

  /// Ends a redrawn line, so that other output begins at the left.
  void End();

 private:
  void Redraw(const std::string& text);

  const ProgressMode mode_;
  const Writer write_;
  size_t shownWidth_ = 0;  // columns to be wiped; 0 when nothing stands
  double lastPlain_ = -1.0;
};

}  // namespace velquinctl
