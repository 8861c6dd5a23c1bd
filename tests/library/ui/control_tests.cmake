# SPDX-License-Identifier: MIT
# The dark controls, each by itself on a window of the test.
velquin_test(NAME ui_controls_tests WINDOWS_ONLY
  SOURCES
    control_fixture.cpp
    controls_leak_test.cpp
    orl_button_test.cpp
    orl_dialog_base_test.cpp
    orl_edit_test.cpp
    orl_group_box_test.cpp
    orl_radio_button_test.cpp
    orl_slider_test.cpp
    orl_spin_button_test.cpp
    orl_static_test.cpp
    picture.cpp
    system_look_test.cpp
  DEPENDS velquin_ui velquin_ui_test_tools velquin_resources)

# The bitmaps are those that their script draws. Nothing has to be built for that, but scripts/test
# builds a test's target by the test's name.
add_custom_target(ui_bitmaps)
add_test(NAME ui_bitmaps COMMAND python3 ${PROJECT_SOURCE_DIR}/res/draw_bitmaps.py --check)
set_tests_properties(ui_bitmaps PROPERTIES LABELS ui TIMEOUT 20)
