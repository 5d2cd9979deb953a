#include "platform/core/I18NLibrary.h"

// Nothing has to be set up: texts keep to themselves, and ICU starts by itself. Nothing is ended
// either, since others in the process may use ICU. So there is nothing to count.

void I18NInitialize() {}
void I18NTerminate() {}

const char* I18NGetPlatformDefaultEncoding() { return "UTF-8"; }
