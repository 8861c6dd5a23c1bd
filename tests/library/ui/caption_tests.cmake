# SPDX-License-Identifier: MIT
# Caption and frame. The text has another place from Windows 8 on, so there is a program for either
# side: scripts/wine-prefix makes Windows programs see Windows 10, and the second one of these, by its
# name, Windows 7.
set(caption_sources
  app_environment.cpp
  caption_boxes_test.cpp
  caption_fixture.cpp
  caption_frame_test.cpp
  caption_press_test.cpp)
velquin_test(NAME ui_caption_tests WINDOWS_ONLY SERIAL LIMIT 150
  SOURCES
    ${caption_sources}
    caption_text_test.cpp
    caption_windows10_test.cpp
  DEPENDS velquin_ui_test_tools velquin_api velquin_resources)
velquin_test(NAME ui_caption_windows7_tests WINDOWS_ONLY SERIAL LIMIT 150
  SOURCES
    ${caption_sources}
    caption_windows7_test.cpp
  DEPENDS velquin_ui_test_tools velquin_api velquin_resources)
