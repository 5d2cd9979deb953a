#include "platform/idom/ChangeJournal.h"

void ChangeJournal::prepare() {
  if (!m_runs) m_runs = std::make_unique<Runs>();
}

ChangeJournal::Run& ChangeJournal::runOf(const xercesc::DOMNode& parent) noexcept {
  if (m_runCount == 0 || run(m_runCount - 1).parent != &parent) {
    Run& next = (*m_runs)[m_runCount++ % runsKept];
    next.parent = &parent;
    next.first = m_count;
  }
  return (*m_runs)[(m_runCount - 1) % runsKept];
}

void ChangeJournal::record(const xercesc::DOMNode& parent, const Change& change) noexcept {
  Run& latest = runOf(parent);
  latest.changes[m_count % changesKept] = change;
  latest.end = ++m_count;
}
