# SPDX-License-Identifier: MIT
# The dialogs: once from the inside, once through the built library.
if(WIN32)
  velquin_library(velquin_ui_test_tools
    SOURCES
      gdi_objects.cpp
      ui_thread.cpp
      window_tools.cpp
    DEPENDS velquin_test_support gdi32 user32)
endif()

velquin_test(NAME ui_dialog_tests WINDOWS_ONLY SERIAL LIMIT 200
  SOURCES
    app_environment.cpp
    caption_test.cpp
    caption_text_test.cpp
    hand_controller_test.cpp
    layout_test.cpp
    message_box_test.cpp
    message_sounds.cpp
    message_text_test.cpp
    slew_calls.cpp
  DEPENDS velquin_ui_test_tools velquin_api velquin_resources velquin_simulator)
if(WIN32)
  target_link_options(ui_dialog_tests PRIVATE
    -Wl,--wrap=_ZN10CTelescope4SlewEiii -Wl,--wrap=__imp_MessageBeep)
endif()

# Takes a minute and looks at nothing but its own process. scripts/soak runs it past the limit that
# the system has for drawing objects.
velquin_test(NAME ui_leak_tests WINDOWS_ONLY LIMIT 300
  SOURCES
    app_environment.cpp
    leak_test.cpp
  DEPENDS velquin_ui_test_tools velquin_api velquin_resources)

# The same windows through velquin.dll, as a host sees them.
velquin_test(NAME ui_dll_tests WINDOWS_ONLY SERIAL LIMIT 180
  SOURCES
    dll_detail_test.cpp
    dll_hand_controller_test.cpp
    dll_threads_test.cpp
  DEPENDS velquin_ui_test_tools velquin_simulator)
if(WIN32)
  add_dependencies(ui_dll_tests velquin)

  # What scripts/screenshots drives.
  velquin_program(velquin_screenshot_host
    SOURCES screenshot_host.cpp
    DEPENDS velquin_ui_test_tools)
  set_target_properties(velquin_screenshot_host PROPERTIES OUTPUT_NAME screenshot-host)
  add_dependencies(velquin_screenshot_host velquin)
endif()
