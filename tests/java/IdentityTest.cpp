// The build identity, as a tool that knows nothing but the marker finds it in a file.

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// Every string that begins with the marker, with the newline that may stand behind its NUL.
std::vector<std::string> markedStrings(const std::string& file) {
  std::ostringstream stream;
  stream << std::ifstream(file, std::ios::binary).rdbuf();
  const std::string content = stream.str();
  std::vector<std::string> found;
  for (auto at = content.find("@(#)"); at != std::string::npos; at = content.find("@(#)", at + 1)) {
    auto end = content.find('\0', at);
    if (content.compare(end + 1, 1, "\n") == 0) end += 2;
    found.push_back(content.substr(at, end - at));
  }
  return found;
}

TEST(BuildIdentity, OutlivesStripAndOptimisationAtLinkTime) {
  using namespace std::string_literals;
  const std::string rule = "@(#)" + std::string(64, '-') + "\n";
  for (const char* file : {VRD_STRIPPED_LIBRARY, VRD_STRIPPED_IDENTITY}) {
    SCOPED_TRACE(file);
    EXPECT_THAT(markedStrings(file),
                testing::ElementsAre(
                    rule, "@(#)vrdcfgapi\0\n"s, "@(#)vrdcfgapi " VRD_VERSION "\0\n"s,
                    testing::AllOf(testing::StartsWith("@(#)libVRDCFGAPI.so, build "),
                                   testing::EndsWith("\0\n"s), testing::SizeIs(testing::Gt(31))),
                    "@(#)VRD server processes: configuration library\0\n"s,
                    "@(#)Copyright the vrdcfgapi authors\n",
                    "@(#)Licensed under the Apache License, Version 2.0\n",
                    "@(#)http://www.apache.org/licenses/LICENSE-2.0\n", rule));
  }
}

}  // namespace
