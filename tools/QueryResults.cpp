#include "tools/QueryResults.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <sstream>

#include "foundation/VRDConfigurationException.h"
#include "platform/core/IBJInputStream.h"
#include "platform/idom/VRDIDOM_Parser.h"
#include "service/IVRDConfiguration.h"
#include "service/VRDConfigurationFactory.h"
#include "tools/FileContent.h"
#include "tools/States.h"
#include "tools/Text.h"

namespace {

constexpr char standardInput[] = "-";
/// The two things in well-formed query results that the store answers with an internal error.
constexpr char likelyCause[] =
    "; the value of an \"advancedSettings\" does not parse, or a result gives a parameter that an "
    "advanced setting gave before";

std::optional<std::string> contentOf(const std::string& file, const Output& output) {
  std::optional<std::string> content = file == standardInput ? readStandardInput() : readFile(file);
  if (!content) {
    output.error("query results " + onOneLine(file) + " cannot be read: " + std::strerror(errno));
  }
  return content;
}

/// Where the library stopped reading; it tells a caller only that it did.
std::string parseError(const std::string& content) {
  std::istringstream stream(content);
  VRDIDOM_Parser parser(0);
  VRDIDOM_Document document;
  if (parser.parse(stream, document) != 0) return "";
  return ':' + std::to_string(parser.getErrorLine()) + ':' +
         std::to_string(parser.getErrorColumn()) + ": " + bytesOf(parser.getErrorText());
}

bool take(const QueryFile& file, const Output& output) {
  std::istringstream source(file.content);
  IBJBufferedInputStream stream(source);
  try {
    VRDConfigurationFactory::getInstance()->init(stream);
    return true;
  } catch (const VRDConfigurationException& error) {
    const int state = static_cast<int>(error.getCode());
    output.error("query results " + onOneLine(file.name) + parseError(file.content) + ": " +
                 explanationOf(state) + (state == VRDCFGAPI_InternalError ? likelyCause : ""));
    return false;
  }
}

}  // namespace

// Through the service and not the store, since that replaces the service's tables as well.
bool takeQueryResults(Options& options, const Output& output) {
  for (const std::string& name : options.queries) {
    std::optional<std::string> content = contentOf(name, output);
    if (!content) return false;
    options.queryFiles.push_back({name, *std::move(content)});
    if (!take(options.queryFiles.back(), output)) return false;
  }
  return true;
}
