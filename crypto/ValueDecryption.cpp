#include "crypto/ValueDecryption.h"

#include <string.h>

#include <string_view>

#include "crypto/CryptoSession.h"
#include "crypto/ProviderMemory.h"
#include "crypto/VRDCrypto.h"
#include "crypto/WipedMemory.h"
#include "foundation/ConfigurationVocabulary.h"
#include "foundation/ElementWalk.h"
#include "foundation/VRDIDOMUtils.h"
#include "platform/core/VRDBase64.h"
#include "platform/idom/VRDIDOM_Attr.h"
#include "platform/idom/VRDIDOM_Document.h"
#include "platform/idom/VRDIDOM_Parser.h"

// Clear text passes through here and is not kept: what held it is wiped when it goes. What remains
// lies with those who asked for it, in the result of `decryptString` and in the tree that was given
// to `decryptXML`.

namespace {

/// A block of clear text from the provider, up to its first NUL. It need not end in one.
I18NString textOf(const void* block, std::size_t size) {
  if (block == nullptr) return I18NString();
  const char* bytes = static_cast<const char*>(block);
  return I18NString(std::string_view(bytes, ::strnlen(bytes, size)));
}

/// What the provider makes of the @p size bytes in @p decoded. These are the value itself if the
/// provider refuses them: they may have been encoded only.
I18NString unprotect(WipedBuffer& decoded, unsigned long size, void* handle) {
  VRDCrypto& provider = *getCryptoInstance();
  void* block = nullptr;
  unsigned long blockSize = 0;
  if (provider.HLD_UnprotectData(handle, decoded.data(), size, &block, &blockSize, nullptr) < 0) {
    return I18NString(decoded.data(), "utf-8");
  }
  // Owned from the success on only: what a provider leaves behind a failure may be anything.
  ProviderMemory<void> owner(provider, block);
  // Straight from the block, so that no other copy has to be wiped.
  I18NString clearText = textOf(block, blockSize);
  try {
    owner.giveBack();
  } catch (...) {
    wipe(clearText);
    throw;
  }
  return clearText;
}

/// What the decoder refuses gives an empty text, and so do protected bytes that open to one: the
/// reader is told that there is no value, and never gets what may be half of one.
I18NString decodeAndUnprotect(const I18NString& text, void* handle) {
  if (text.empty()) return I18NString();
  // As much room as text is more than enough. Text that is not ASCII has more bytes than
  // characters, but its decoding ends at the first of these.
  WipedBuffer decoded(static_cast<std::size_t>(text.length()) + 1);
  unsigned long size = decoded.size();
  if (VRDBase64Decode(text.c_str(), decoded.data(), &size) != 0) return I18NString();
  return unprotect(decoded, size, handle);
}

/// Whether @p element, which has the attribute @p encrypted, is to be decrypted. A system password
/// stays as it is: only what it belongs to may read it.
bool isToBeDecrypted(VRDIDOM_Element& element, VRDIDOM_Attr& encrypted) {
  return saysTrue(encrypted.getValue()) &&
         element.getAttributeNS(vocabulary().schemaInstanceUri, vocabulary().type) !=
             vocabulary().systemPassword &&
         VRDIDOMUtils::isTextOnly(element) != 0;
}

/// Puts @p content into @p element, which is empty: as a tree if it is a document, else as text.
void fill(VRDIDOM_Element& element, const I18NString& content) {
  VRDIDOM_Document parsed;
  VRDIDOM_Parser parser(0);
  int size = 0;
  const char* bytes = content.c_str(nullptr, &size);
  if (parser.parse(bytes, size, parsed) != 0) {
    VRDIDOM_Element root = parsed.getDocumentElement();
    element.appendChild(element.getOwnerDocument().importNode(root, 1));
  } else {
    VRDIDOMUtils::setText(element, content);
  }
}

void decryptElement(VRDIDOM_Element& element, void* handle) {
  const WipedText clear(decryptString(VRDIDOMUtils::getText(element), handle));
  // Not decrypted, it has to stay marked: else the next one would take the stored form for a value.
  if (clear.text().empty()) return;
  element.removeAttribute(vocabulary().encrypted);
  removeChildren(element);
  fill(element, clear.text());
}

}  // namespace

I18NString decryptString(I18NString text, void* handle) {
  try {
    return decodeAndUnprotect(text, handle);
  } catch (...) {
    // The provider is foreign code and can throw anything. The stored form gives nothing away.
    return text;
  }
}

VRDIDOM_Element decryptXML(VRDIDOM_Element element, void* handle) {
  walkElements(element, [handle](VRDIDOM_Element& child) {
    VRDIDOM_Attr encrypted = child.getAttributeNode(vocabulary().encrypted);
    if (encrypted.isNull()) return true;
    // The attribute ends the descent, whatever it says.
    if (isToBeDecrypted(child, encrypted)) decryptElement(child, handle);
    return false;
  });
  return element;
}
