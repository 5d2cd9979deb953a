// Prints a parameter of the installation that the environment names.

#include <iostream>

#include "store/VRDConfiguration.h"

int main() {
  I18NString address;
  const VRDCFGAPI_ErrorState state =
      VRDConfiguration::getInstance()->getValue("externalDispatcher", 0, address);
  if (state != VRDCFGAPI_NoError) {
    std::cerr << "state " << state << '\n';
    return 1;
  }
  std::cout << address.c_str() << '\n';
}
