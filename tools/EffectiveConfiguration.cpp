#include "tools/EffectiveConfiguration.h"

#include "foundation/VRDIDOMUtils.h"
#include "platform/idom/VRDIDOM_Element.h"
#include "platform/idom/VRDIDOM_Helper.h"
#include "service/IVRDConfiguration.h"
#include "service/VRDConfigurationFactory.h"
#include "store/VRDConfiguration.h"
#include "tools/Secrets.h"
#include "tools/Text.h"

namespace {

constexpr char wholeTree[] = "";

VRDConfiguration& store() { return *VRDConfiguration::getInstance(); }

std::string xmlOf(VRDIDOM_Node& node) {
  I18NString text;
  VRDIDOM_Helper::write(node, text);
  return bytesOf(text);
}

EffectiveParameter absent(const std::string& name) {
  EffectiveParameter parameter;
  parameter.name = name;
  return parameter;
}

}  // namespace

std::string EffectiveParameter::marks() const {
  std::string marks;
  const auto add = [&](bool set, const char* mark) {
    if (set) marks += (marks.empty() ? "" : ",") + std::string(mark);
  };
  add(opaque, "opaque");
  add(encrypted, "encrypted");
  add(undecrypted || state != VRDCFGAPI_NoError, "undecryptable");
  return marks;
}

void EffectiveParameter::writeTo(JsonWriter& writer) const {
  writer.beginObject().text("name", name);
  if (state == VRDCFGAPI_NoError) {
    writer.text("value", text);
  } else {
    writer.number("state", static_cast<unsigned long>(state));
  }
  writer.text("type", type).truth("opaque", opaque).truth("encrypted", encrypted);
  writer.truth("masked", masked).truth("undecryptable", undecrypted || state != VRDCFGAPI_NoError);
  writer.endObject();
}

EffectiveConfiguration::EffectiveConfiguration(bool decrypt) : m_decrypt(decrypt) {
  for (const I18NString& name : VRDConfigurationFactory::getInstance()->getParameterNames()) {
    m_names.push_back(bytesOf(name));
  }
}

// The value as an element tells what its text does not: whether it is there at all, its type, and
// its marks. Nothing is decrypted for that. Whether it is opaque stands on the parameter, which no
// door gives; but only then is its text the element.
EffectiveParameter EffectiveConfiguration::describe(const std::string& name,
                                                    VRDIDOM_Node& value) const {
  EffectiveParameter parameter = absent(name);
  parameter.state = store().getValue(textOf(name), 0, value);
  if (value.isNull()) return parameter;
  VRDIDOM_Element element = value;
  parameter.known = true;
  parameter.type = bytesOf(typeOf(element));
  I18NString text;
  store().getValue(textOf(name), 0, text);
  parameter.opaque = bytesOf(text) == xmlOf(value);
  parameter.encrypted = holdsEncrypted(element);
  return parameter;
}

// Where nothing is masked, the text is the one that the store gives to every client.
EffectiveParameter EffectiveConfiguration::read(const std::string& name) const {
  VRDIDOM_Node value;
  EffectiveParameter parameter = describe(name, value);
  // The empty name stands for the whole tree, which is no parameter.
  if (!parameter.known || name.empty()) return absent(name);
  if (m_decrypt || !maskSecrets(value)) {
    readText(parameter);
  } else {
    parameter.masked = true;
    parameter.text = parameter.opaque ? xmlOf(value) : secretMask;
  }
  return parameter;
}

EffectiveParameter EffectiveConfiguration::readXml(const std::string& name) const {
  VRDIDOM_Node value;
  EffectiveParameter parameter = describe(name, value);
  if (!parameter.known || name.empty()) return absent(name);
  VRDIDOM_Element element = value;
  if (m_decrypt && isEncrypted(element)) {
    // As an element, a value that is marked itself comes in its stored form; as text, in clear.
    readText(parameter);
    VRDIDOMUtils::setText(element, textOf(parameter.text));
    element.removeAttribute("encrypted");
    parameter.text = parameter.state == VRDCFGAPI_NoError ? xmlOf(value) : "";
  } else {
    showXml(parameter, value);
  }
  return parameter;
}

EffectiveParameter EffectiveConfiguration::readTree() const {
  VRDIDOM_Node root;
  EffectiveParameter tree = describe(wholeTree, root);
  tree.opaque = true;
  if (tree.known) showXml(tree, root);
  return tree;
}

void EffectiveConfiguration::readText(EffectiveParameter& parameter) const {
  // A decrypting read wants a session even if there is nothing to decrypt.
  const int decrypt = m_decrypt && parameter.encrypted ? 1 : 0;
  I18NString text;
  parameter.state = store().getValue(textOf(parameter.name), decrypt, text);
  parameter.text = bytesOf(text);
  if (decrypt != 0 && parameter.opaque && parameter.state == VRDCFGAPI_NoError) {
    VRDIDOM_Node node;
    store().getValue(textOf(parameter.name), decrypt, node);
    parameter.undecrypted = holdsUndecrypted(node);
  }
}

/// Puts @p node, the stored form, into the parameter: masked, or decrypted.
void EffectiveConfiguration::showXml(EffectiveParameter& parameter, VRDIDOM_Node& node) const {
  if (m_decrypt && parameter.encrypted) {
    parameter.state = store().getValue(textOf(parameter.name), 1, node);
    if (parameter.state != VRDCFGAPI_NoError) return;
    parameter.undecrypted = holdsUndecrypted(node);
  } else if (!m_decrypt) {
    parameter.masked = maskSecrets(node);
  }
  parameter.text = xmlOf(node);
}
