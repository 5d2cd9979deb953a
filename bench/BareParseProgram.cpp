// The peer of a cold load: a program that starts Xerces-C and parses one file into a DOM,
// namespaces on, and no more.

#include <unistd.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "bench/Measure.h"

int main(int count, char** arguments) {
  if (count < 2) return 2;
  xercesc::XMLPlatformUtils::Initialize();
  xercesc::XercesDOMParser parser;
  parser.setDoNamespaces(true);
  parser.parse(arguments[1]);
  const bool parsed = parser.getDocument() != nullptr && parser.getErrorCount() == 0 &&
                      parser.getDocument()->getDocumentElement() != nullptr;
  report("peak", processMemory("VmHWM"));
  report("now", processMemory("VmRSS"));
  std::fflush(stdout);
  _exit(parsed ? 0 : 1);
}
