#include "bench/PeerDocuments.h"

#include <fstream>

#include "bench/Documents.h"

namespace {

/// What stands around the section, and around each value in it.
struct Layout {
  const char* begin;
  const char* beforeKey;
  const char* beforeValue;
  const char* afterValue;
  bool closesWithKey;
  const char* end;
};

Layout layoutOf(PeerForm form) {
  switch (form) {
    case PeerForm::NestedXml:
      return {"<config>\n<service>\n", "  <", ">", "</", true, "</service>\n</config>\n"};
    case PeerForm::KeyFile:
      return {"[service]\n", "", "=", "", false, ""};
    case PeerForm::Groups:
      return {"service :\n{\n", "  ", " = \"", "\";", false, "};\n"};
  }
  return {};
}

}  // namespace

void writePeerDocument(const std::filesystem::path& file, PeerForm form,
                       const std::vector<std::string>& names, const std::string& mark) {
  const Layout layout = layoutOf(form);
  std::ofstream out(file);
  out << layout.begin;
  for (const std::string& name : names) {
    const std::string key = name.substr(name.find('.') + 1);
    out << layout.beforeKey << key << layout.beforeValue << sampleText << mark << layout.afterValue
        << (layout.closesWithKey ? key + ">" : "") << '\n';
  }
  out << layout.end;
}
