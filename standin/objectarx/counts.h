/// What a run of the host counts, and the rules that the module broke.
#ifndef STANDIN_OBJECTARX_COUNTS_H
#define STANDIN_OBJECTARX_COUNTS_H

#include <cstdint>
#include <string>
#include <vector>

namespace standin::host {

struct Counts {
  std::uint64_t updates = 0;       ///< AcGsView::update
  std::uint64_t commits = 0;       ///< acgsSetViewParameters
  std::uint64_t paperUpdates = 0;  ///< updateDisplay and acedVportTableRecords2Vports
  std::uint64_t textsSent = 0;
  std::uint64_t modulePrints = 0;
  std::uint64_t locks = 0;
  std::uint64_t unlocks = 0;
  std::uint64_t openObjects = 0;         ///< objects open now
  std::uint64_t selectionSetsAlive = 0;  ///< selection sets taken and not freed now
  std::uint64_t reactors = 0;            ///< document reactors registered now
  std::uint64_t commandsRegistered = 0;  ///< commands on the command stack now
  std::uint64_t callsOffMainThread = 0;
  std::int64_t lockDepth = 0;  ///< locks held on open documents now
  /// One line for each breach of a rule, naming the operation (a call off the main thread, an unlock without
  /// a lock, a close of an object that is not open ...). At most 100 lines are kept; further ones are
  /// counted.
  std::vector<std::string> breaches;
  std::uint64_t breachesInAll = 0;
};

}  // namespace standin::host

#endif
