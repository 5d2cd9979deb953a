#include "bench/Table.h"

#include <cstdio>

namespace {

std::string number(double value, const char* form) {
  char text[64];
  std::snprintf(text, sizeof text, form, value);
  return text;
}

struct Row {
  std::string work;
  std::string ours;
  std::string peer;
  std::string peers;
  std::string ratio;
  std::string reach;
};

void print(const Row& row) {
  std::printf("| %-48s | %13s | %-34s | %13s | %5s | %-12s |\n", row.work.c_str(), row.ours.c_str(),
              row.peer.c_str(), row.peers.c_str(), row.ratio.c_str(), row.reach.c_str());
  std::fflush(stdout);
}

}  // namespace

Table::Table() {
  print({"work", "ours", "beside", "peer's", "ratio", "reach"});
  print({"---", "---", "---", "---", "---", "---"});
}

void Table::add(const std::string& work, const std::string& unit, double ours,
                const std::string& peer, double peers, double reach) {
  const double ratio = peers > 0 ? ours / peers : 0;
  print({work, number(ours, "%.4g ") + unit, peer, number(peers, "%.4g ") + unit,
         number(ratio, "%.2f"), number(reach, ratio <= reach ? "%.2f" : "%.2f  missed")});
}

void Table::add(const std::string& work, const std::string& unit, double ours,
                const std::string& peer, double peers) {
  print({work, number(ours, "%.4g ") + unit, peer, number(peers, "%.4g ") + unit,
         number(peers > 0 ? ours / peers : 0, "%.2f"), ""});
}

void Table::add(const std::string& work, const std::string& unit, double ours) {
  print({work, number(ours, "%.4g ") + unit, "", "", "", ""});
}
