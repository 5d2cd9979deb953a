#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The forms in which the peers keep a configuration.
enum class PeerForm {
  NestedXml,  ///< <config><section><key>value</key></section></config>
  KeyFile,    ///< [section] and key=value
  Groups      ///< section : { key = "value"; };
};

/// Writes @p names, of the form "section.key" with one section, each with the text that
/// `makeSample` gives it and @p mark behind.
void writePeerDocument(const std::filesystem::path& file, PeerForm form,
                       const std::vector<std::string>& names, const std::string& mark);
