#pragma once

// Lets clang check at compile time that what a lock guards is touched under that lock only.

#if defined(__clang__)
#define VRD_THREAD_ANNOTATION(x) __attribute__((x))
#else
#define VRD_THREAD_ANNOTATION(x)
#endif

#define VRD_CAPABILITY VRD_THREAD_ANNOTATION(capability("mutex"))
#define VRD_SCOPED_CAPABILITY VRD_THREAD_ANNOTATION(scoped_lockable)
#define VRD_GUARDED_BY(lock) VRD_THREAD_ANNOTATION(guarded_by(lock))
#define VRD_PT_GUARDED_BY(lock) VRD_THREAD_ANNOTATION(pt_guarded_by(lock))
#define VRD_REQUIRES(lock) VRD_THREAD_ANNOTATION(requires_capability(lock))
#define VRD_ACQUIRE(...) VRD_THREAD_ANNOTATION(acquire_capability(__VA_ARGS__))
#define VRD_RELEASE(...) VRD_THREAD_ANNOTATION(release_capability(__VA_ARGS__))
#define VRD_NO_THREAD_CHECK VRD_THREAD_ANNOTATION(no_thread_safety_analysis)
