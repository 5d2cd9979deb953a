#pragma once

#include "platform/core/I18NString.h"
#include "platform/idom/VRDIDOM_Element.h"

// The words of the configuration documents.

inline constexpr char ConfigNamespaceUri[] = "http://zandor.com/schemas/vtconfig/1/";
inline constexpr char ParamsNamespaceUri[] = "http://zandor.com/schemas/configparams/XMLSchema/1/";
inline constexpr char XmlSchemaNamespaceUri[] = "http://www.w3.org/2001/XMLSchema";
inline constexpr char XmlSchemaInstanceNamespaceUri[] = "http://www.w3.org/2001/XMLSchema-instance";

// Types of values. Their prefix is part of the word: it is compared and not looked up.
inline constexpr char FolderPathType[] = "cfg:folderPath";
inline constexpr char FilePathType[] = "cfg:filePath";
inline constexpr char SystemPasswordType[] = "cfg:systemPassword";

/// The words that trees are searched for, as the texts that they are compared with.
struct ConfigurationVocabulary {
  const I18NString configUri = ConfigNamespaceUri;
  const I18NString schemaInstanceUri = XmlSchemaInstanceNamespaceUri;

  // Elements.
  const I18NString parameter = "parameter";
  const I18NString instances = "instances";
  const I18NString instance = "instance";
  const I18NString value = "value";
  const I18NString queryResult = "queryResult";

  // Attributes. The type is in the schema instance namespace.
  const I18NString name = "name";
  const I18NString opaque = "opaque";
  const I18NString encrypted = "encrypted";
  const I18NString disabled = "disabled";
  const I18NString type = "type";

  // Types.
  const I18NString folderPath = FolderPathType;
  const I18NString filePath = FilePathType;
  const I18NString systemPassword = SystemPasswordType;
};

/// The one of the process, made at the first call and never destroyed.
const ConfigurationVocabulary& vocabulary();

/// Whether the value of an attribute says "true", in whatever case.
bool saysTrue(const I18NString& value);
/// Whether @p element has the attribute @p name and that says "true".
bool saysTrue(VRDIDOM_Element& element, const I18NString& name);
/// Whether it says "false".
bool saysFalse(const I18NString& value);

/// Sets the declarations of the prefixes "vtn", "cfg", "xsd" and "xsi" on @p element as plain
/// attributes, in this order, so that its text can be read without the tree around it.
void declareConfigurationPrefixes(VRDIDOM_Element& element);
