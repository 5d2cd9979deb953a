#include "platform/mcf/DefaultLists.h"

namespace {
const char* const noDefaults[] = {""};
}

const char* const* getruntimeDefaults() { return noDefaults; }

const char* const* getstartupDefaults() { return noDefaults; }
