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
    expected_controls.cpp
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

# The same on a system that cannot show Japanese. english_fit_test.cpp changes the resolution of that
# system for a program that it starts.
velquin_test(NAME ui_english_tests WINDOWS_ONLY SERIAL LOCALE C
  SOURCES
    ${PROJECT_SOURCE_DIR}/tests/library/dll/run_program.cpp
    app_environment.cpp
    english_fit_test.cpp
    english_layout_test.cpp
    english_message_box_test.cpp
    expected_controls.cpp
  DEPENDS velquin_ui_test_tools velquin_api velquin_resources)
if(WIN32)
  velquin_program(fit_host
    SOURCES app_environment.cpp fit_host.cpp
    DEPENDS velquin_ui_test_tools velquin_api velquin_resources)
  set_target_properties(fit_host PROPERTIES OUTPUT_NAME fit-host)
  add_dependencies(ui_english_tests fit_host)
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
    dll_texts_test.cpp
    dll_threads_test.cpp
    picture.cpp
    window_texts_japanese.cpp
  DEPENDS velquin_ui_test_tools velquin_framework_win velquin_simulator)
# dll_texts_test.cpp on the other systems that make a difference: an English one, and hosts with UTF-8 for
# users of either language.
velquin_test(NAME ui_dll_english_tests WINDOWS_ONLY SERIAL LOCALE C
  SOURCES dll_texts_test.cpp picture.cpp window_texts_english.cpp
  DEPENDS velquin_ui_test_tools velquin_framework_win velquin_simulator)
velquin_test(NAME ui_dll_utf8_tests WINDOWS_ONLY SERIAL
  SOURCES dll_texts_test.cpp picture.cpp window_texts_japanese_utf8.cpp
  DEPENDS velquin_ui_test_tools velquin_framework_win velquin_simulator)
velquin_test(NAME ui_dll_english_utf8_tests WINDOWS_ONLY SERIAL LOCALE C
  SOURCES dll_texts_test.cpp picture.cpp window_texts_english_utf8.cpp
  DEPENDS velquin_ui_test_tools velquin_framework_win velquin_simulator)
if(WIN32)
  enable_language(RC)
  foreach(program ui_dll_utf8_tests ui_dll_english_utf8_tests)
    target_sources(${program} PRIVATE utf8.rc)
  endforeach()
  foreach(program ui_dll_tests ui_dll_english_tests ui_dll_utf8_tests ui_dll_english_utf8_tests)
    add_dependencies(${program} velquin)
  endforeach()

  # What scripts/screenshots drives.
  velquin_program(velquin_screenshot_host
    SOURCES screenshot_host.cpp
    DEPENDS velquin_ui_test_tools)
  set_target_properties(velquin_screenshot_host PROPERTIES OUTPUT_NAME screenshot-host)
  add_dependencies(velquin_screenshot_host velquin)
endif()
