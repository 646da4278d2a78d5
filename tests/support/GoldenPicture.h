#pragma once

#include "gui/Bitmap.h"

#include <string>

/// What differs too much between a bitmap and the picture of that name in the folder: nothing if it looks the
/// same. With SORDELIN_UPDATE_PICTURES set in the environment the picture is written anew instead.
std::string differenceFromPicture(const gui::Bitmap& bitmap, const std::string& folder,
                                  const std::string& name);
