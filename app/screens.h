/// \file
/// The screens and the ways between them.
#pragma once

#include <windef.h>

/// What is shown. The values are those of CAppController::screenId.
enum ScreenId : LONG {
  SCREEN_NONE = 1,          ///< none yet
  SCREEN_THEME_LIST = 2,    ///< the themes on the phone
  SCREEN_EDITOR = 3,        ///< the plug-ins of one theme
  SCREEN_SAVE_THEME = 4,    ///< the form that asks for a title and a file name
  SCREEN_CHOOSER = 5,       ///< the favourites
  SCREEN_ADD_FAVORITE = 6,  ///< the form that asks for a favourite's name
  SCREEN_ABOUT = 8,         ///< the program and its version
};

/// Where CAppController::Navigate goes.
enum NavTarget : LONG {
  NAV_THEME_LIST = 0,  ///< show the theme list, loading the themes when there is no list
  NAV_EDITOR = 1,      ///< open the editor on the selected theme
  NAV_CHOOSER = 2,     ///< open the favourites chooser
  NAV_RETURN = 3,      ///< go back from the chooser to the editor
  NAV_RELOAD = 4,      ///< drop everything that is loaded and show the theme list afresh
  NAV_SAVE_THEME = 5,  ///< open the save-theme form, filled from the selected theme
};

/// Which edit fields CAppController::CreateEditFields makes.
enum EditLayout : LONG {
  EDIT_LAYOUT_SAVE_THEME = 1,
  EDIT_LAYOUT_ADD_FAVORITE = 2,
};
