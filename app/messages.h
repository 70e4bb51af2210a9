/// \file
/// What the program tells and asks the user, in message boxes.
#pragma once

#include <windef.h>

inline constexpr LPCWSTR MESSAGE_CAPTION = TEXT("Alert");

inline constexpr LPCWSTR MESSAGE_DELETE_THEME = TEXT("Are you sure you want to delete this theme?");
inline constexpr LPCWSTR MESSAGE_THEME_NOT_DELETED = TEXT("Selected theme couldn't be deleted!");
inline constexpr LPCWSTR MESSAGE_DELETE_FAVORITE = TEXT("Are you sure you want to delete this plugin?");
inline constexpr LPCWSTR MESSAGE_FAVORITE_NOT_DELETED = TEXT("Selected plugin couldn't be deleted!");

inline constexpr LPCWSTR MESSAGE_TITLE_TOO_SHORT = TEXT("Theme name too short");
inline constexpr LPCWSTR MESSAGE_FILE_NAME_TOO_SHORT = TEXT("File name too short");
inline constexpr LPCWSTR MESSAGE_OVERWRITE = TEXT("File allready exists. Do you want to overwrite?");
inline constexpr LPCWSTR MESSAGE_SAVE_FAILED = TEXT("There was an error saving theme. Please try again");
inline constexpr LPCWSTR MESSAGE_APPLY_SAVED = TEXT("Do you want to apply saved theme?");

inline constexpr LPCWSTR MESSAGE_FAVORITE_NAME_TOO_SHORT = TEXT("Plugin name too short!");
