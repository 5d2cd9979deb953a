#pragma once

#include <atomic>

#include "platform/core/VRDThreads.h"

// State of the unit VRDConfiguration, one per process. A flag that is read without a lock is read
// with acquire and written under its lock with release, so whoever sees it set sees what was done
// before. s_btempPathSetting and m_bStartupInitialized are met under a lock only.

extern std::atomic<int> s_bsingletonVRDConfigurationSet;  // the store exists and init() has run
extern std::atomic<int> s_btempPathSet;                   // the temporary path has been dealt with
extern std::atomic<int> s_btempPathSetting;               // it is being dealt with right now
extern std::atomic<int> m_bStartupInitialized;            // the startup document has been merged
extern std::atomic<int> s_bInitializedDirPath;            // discovery has run

// Lock order: g_singletonVRDConfigurationLock, then the store's m_lock, then m_mutexDirPath.
extern VRDThreadCriticalSection m_mutexDirPath;
extern VRDThreadRecursiveCriticalSection g_singletonVRDConfigurationLock;
