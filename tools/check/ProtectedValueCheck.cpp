#include "platform/core/VRDBase64.h"
#include "tools/ProviderSession.h"
#include "tools/StartupVocabulary.h"
#include "tools/Text.h"
#include "tools/check/Checks.h"

namespace {

constexpr char advice[] = "protect the value anew with `vrdcfg protect`";

struct ProtectedValue {
  std::string parameter;
  const LocatedElement* element;
  bool isRead;  // a system password inside an opaque value never is
};

std::vector<ProtectedValue> protectedValues(const LocatedElement& root) {
  std::vector<ProtectedValue> values;
  for (const LocatedElement& child : root.children) {
    if (!isParameter(child) || isDisabled(child)) continue;
    forEachElement(child, [&](const LocatedElement& element) {
      if (element.says("encrypted") && element.children.empty()) {
        const bool isRead = &element == valueOf(child) || element.type() != SystemPasswordType;
        values.push_back({nameOf(child), &element, isRead});
      }
    });
  }
  return values;
}

bool isBase64(const std::string& text) {
  std::string bytes(text.size() + 1, '\0');
  unsigned long size = bytes.size();
  return VRDBase64Decode(text.c_str(), bytes.data(), &size) == 0;
}

/// @param session null where there is no provider, which then can refuse nothing
void checkStoredText(const ProtectedValue& value, const ProviderSession* session,
                     FindingList& findings) {
  const std::string what = "the encrypted value in parameter " + inQuotes(value.parameter);
  const std::string& text = value.element->text;
  if (text.empty()) {
    findings.add("empty-secret", *value.element, what + " is empty, so it cannot be decrypted",
                 advice);
  } else if (!isBase64(text)) {
    findings.add("bad-secret", *value.element, what + " is not base64, so it cannot be decrypted",
                 advice);
  } else if (session != nullptr && value.isRead && !session->opens(text)) {
    findings.add("refused-secret", *value.element,
                 what + " is refused by the crypto provider: " + session->reason(), advice);
  }
}

void reportNoSession(const ProviderSession& session, FindingList& findings) {
  findings.add("no-session",
               "the crypto provider " + providerPath() +
                   " opens no session, so no encrypted value can be read: " + session.reason(),
               "make a key with `vrdcfg keygen`, or bring the key that protected the values");
}

}  // namespace

void checkProtectedValues(const LocatedElement& root, FindingList& findings) {
  const std::vector<ProtectedValue> values = protectedValues(root);
  // Without anything to decrypt the provider is not loaded, by the library either.
  if (values.empty()) return;
  const ProviderSession session;
  if (ProviderSession::hasProvider() && !session.isOpen()) reportNoSession(session, findings);
  for (const ProtectedValue& value : values) {
    checkStoredText(value, session.isOpen() ? &session : nullptr, findings);
  }
}
