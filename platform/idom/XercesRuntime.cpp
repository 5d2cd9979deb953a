#include "platform/idom/XercesRuntime.h"

#include <new>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMImplementationRegistry.hpp>
#include <xercesc/dom/DOMMemoryManager.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XercesVersion.hpp>

#include "platform/idom/DomMemory.h"

static_assert(_XERCES_VERSION >= 30200 && _XERCES_VERSION < 30300,
              "the public headers name the namespace of Xerces-C 3.2");

namespace {

// Xerces-C counts its users without looking who they are. A user that ends it more often than it
// started it would end it for all, so we count as many.
constexpr int shares = 1000;

constexpr std::size_t firstBlock = 1024;

/// More than what a start takes.
constexpr std::size_t startMemory = std::size_t{1} << 20;

/// Xerces-C's own ends the process.
class ThrowingPanicHandler final : public xercesc::PanicHandler {
 public:
  void panic(const PanicReasons) override { throw std::bad_alloc(); }
};

/// Takes the first share. Xerces-C can neither go on after half a start nor take it back, so it is
/// not begun without the memory that it needs. Where somebody else is quicker to take that,
/// Xerces-C is not touched again.
void start() {
  static ThrowingPanicHandler& panicHandler = *new ThrowingPanicHandler;
  static bool isBroken = false;
  if (isBroken) throw std::bad_alloc();
  ::operator delete(::operator new(startMemory));
  isBroken = true;
  xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr,
                                        &panicHandler);
  isBroken = false;
}

}  // namespace

const XercesRuntime& XercesRuntime::instance() {
  static const XercesRuntime& runtime = *new XercesRuntime;
  return runtime;
}

XercesRuntime::XercesRuntime() {
  start();
  for (int i = 1; i < shares; ++i) xercesc::XMLPlatformUtils::Initialize();
  // Two tables in there are filled at first use and without a lock: the list of implementations,
  // and which node may be whose child.
  m_implementation = xercesc::DOMImplementationRegistry::getDOMImplementation(u"");
  xercesc::DOMDocument* document = createDocument();
  document->appendChild(document->createElement(u"x"));
  document->release();
}

// Most documents hold one parameter and live for one call, so their memory starts small; the blocks
// of a large one double in size soon enough.
xercesc::DOMDocument* XercesRuntime::createDocument() const {
  xercesc::DOMDocument* document = m_implementation->createDocument(&DomMemory::instance());
  void* memory = document->getFeature(xercesc::XMLUni::fgXercescInterfaceDOMMemoryManager, nullptr);
  static_cast<xercesc::DOMMemoryManager*>(memory)->setMemoryAllocationBlockSize(firstBlock);
  return document;
}
