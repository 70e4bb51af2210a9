/// \file
/// Identifiers of the program's resources, shared by the resource script and the sources.
#pragma once

// String table.
#define IDS_TITLE 1       // title of the main window
#define IDS_CLASS_NAME 2  // class of the main window
#define IDS_CANCEL 105
#define IDS_CLOSE 120
#define IDS_SELECT 121
#define IDS_OPTIONS 125
#define IDS_EXIT 127

#define IDI_QUILLMARK 101

// Soft-key bars; the menu of a bar has the bar's number.
#define IDR_FORM_BAR 102
#define IDR_EDITOR_BAR 103
#define IDR_THEME_LIST_BAR 126
#define IDR_CHOOSER_BAR 128
#define IDR_ABOUT_BAR 129

// Commands of soft keys and menu items. Some mean different things on different screens.
#define IDM_LEFT_SOFT_KEY 40001   // "Save" on the forms, opens "Options" on the list screens
#define IDM_RIGHT_SOFT_KEY 40002  // "Exit", "Cancel" or "Back"
#define IDM_ADD_NEW_PLUGIN 40003
#define IDM_DELETE 40004  // "Delete" and "Remove from theme"
#define IDM_ADD_TO_FAVORITES 40005
#define IDM_CONFIRM 40007  // "Apply", "Save as" and "Add Plugin"
#define IDM_EDIT 40008
#define IDM_HELP 40009
#define IDM_ABOUT 40010
