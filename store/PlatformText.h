#pragma once

#include "platform/core/I18NLibrary.h"
#include "platform/core/I18NString.h"

/// Text from the environment, from a file that names paths, or from the default lists.
inline I18NString platformText(const char* text) {
  return I18NString(text, I18NGetPlatformDefaultEncoding(), -1, nullptr, nullptr);
}
