#pragma once

// The words of the configuration documents.

inline constexpr char ConfigNamespaceUri[] = "http://zandor.com/schemas/vtconfig/1/";
inline constexpr char ParamsNamespaceUri[] = "http://zandor.com/schemas/configparams/XMLSchema/1/";
inline constexpr char XmlSchemaNamespaceUri[] = "http://www.w3.org/2001/XMLSchema";
inline constexpr char XmlSchemaInstanceNamespaceUri[] = "http://www.w3.org/2001/XMLSchema-instance";

class I18NString;
class VRDIDOM_Element;

/// Whether the value of an attribute says "true", in whatever case.
bool saysTrue(const I18NString& value);
/// Whether @p element has the attribute @p name and that says "true".
bool saysTrue(VRDIDOM_Element& element, const I18NString& name);
/// Whether it says "false".
bool saysFalse(const I18NString& value);

/// Sets the declarations of the prefixes "vtn", "cfg", "xsd" and "xsi" on @p element as plain
/// attributes, in this order, so that its text can be read without the tree around it.
void declareConfigurationPrefixes(VRDIDOM_Element& element);
