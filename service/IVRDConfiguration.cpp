#include "service/IVRDConfiguration.h"

// Here and not in the header, so that the class has its type identity in this library.
IVRDConfiguration::~IVRDConfiguration() = default;
