#pragma once

/// How the command ends; scripts rely on these.
namespace ExitStatus {

inline constexpr int done = 0;
inline constexpr int no = 1;         ///< The answer is "no", or there are findings.
inline constexpr int cannotRun = 2;  ///< Bad usage, no installation, or a failure.

}  // namespace ExitStatus
