// SPDX-License-Identifier: MIT
// The numbers of the library's dialogs, controls and bitmaps, for velquin.rc and for library/ui/. A
// dialog has two templates with the same controls: a Japanese one, and an English one whose number
// is kEnglishTexts (string_ids.h) higher.
#ifndef VELQUIN_RES_RESOURCE_IDS_H
#define VELQUIN_RES_RESOURCE_IDS_H

#define IDD_DETAIL 1000
#define IDD_DETAIL_ENGLISH 21000
#define IDC_DETAIL_LINE1 1002
#define IDC_DETAIL_LINE2 1003
#define IDC_DETAIL_LINE3 1004
#define IDC_DETAIL_CLOSE 8

#define IDD_CONTROLLER 3002
#define IDD_CONTROLLER_ENGLISH 23002
#define IDC_SPEED 1007
#define IDC_NORTH 3010
#define IDC_SOUTH 3011
#define IDC_EAST 3012
#define IDC_WEST 3013
#define IDC_STOP 3018
#define IDC_GOTO 3019
#define IDC_SYNC 3020
#define IDC_HOME 3021

#define IDD_MESSAGE_BOX 8001
#define IDD_MESSAGE_BOX_ENGLISH 28001
#define IDC_MESSAGE_ICON 10000
#define IDC_MESSAGE_TEXT 10001
#define IDC_MESSAGE_BUTTON3 8

#define IDB_RADIO_BOXES 8011
#define IDB_SPIN_ARROWS 8012
#define IDB_CAPTION_BUTTONS 8030

#endif
