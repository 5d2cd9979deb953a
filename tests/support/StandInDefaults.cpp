#include "tests/support/StandInDefaults.h"

#include "platform/mcf/DefaultLists.h"

namespace {

/// A list in the form of the defaults library: names and values in turn, an empty name at the end.
class FlatList {
 public:
  void set(const StandInDefaults::List& list) {
    m_list = list;
    m_flat.clear();
    for (const auto& [name, value] : m_list) {
      m_flat.insert(m_flat.end(), {name.c_str(), value.c_str()});
    }
    m_flat.push_back("");
  }
  const char* const* get() const { return m_flat.data(); }

 private:
  StandInDefaults::List m_list;
  std::vector<const char*> m_flat{""};
};

struct Lists {
  FlatList runtime, startup;
};

Lists& lists() {
  static Lists& immortal = *new Lists;
  return immortal;
}

}  // namespace

void StandInDefaults::setRuntime(const List& list) { lists().runtime.set(list); }
void StandInDefaults::setStartup(const List& list) { lists().startup.set(list); }

const char* const* getruntimeDefaults() { return lists().runtime.get(); }
const char* const* getstartupDefaults() { return lists().startup.get(); }
