#pragma once

#include <sys/socket.h>
#include <sys/time.h>

// The interface of a crypto provider: the one table of its entry points.
//
// A provider exports all of them, with C linkage, under these names. Each returns a status of which
// a negative value is failure. Memory that a provider gives out, error documents included, belongs
// to it and goes back through HLD_CryptoFree.
//
// Record types of the provider, only passed through.
struct HLD_Handle_Set;
struct HLD_Pollfd;

/// Expands `ROW(name, error out, (parameters), arguments...)` for each entry point, in the order in
/// which they are bound. "error out" is the parameter that takes an error document, or nullptr
/// where the signature does not end in one.
// clang-format off
#define VRD_PROVIDER_ENTRY_POINTS(ROW)                                                             \
  ROW(HLD_CryptoInitialize, error, (char* document, char* reserved, char** error),                 \
      document, reserved, error)                                                                   \
  ROW(HLD_CryptoTerminate, error, (char* document, char* reserved, char** error),                  \
      document, reserved, error)                                                                   \
  ROW(HLD_CryptoFree, nullptr, (void* memory, char* reserved),                                     \
      memory, reserved)                                                                            \
  ROW(HLD_CryptoGetLastErrorDetails, error, (void* handle, char* reserved, char** error),          \
      handle, reserved, error)                                                                     \
  ROW(HLD_Socket, error, (void** handle, char* document, char* reserved, char** error),            \
      handle, document, reserved, error)                                                           \
  ROW(HLD_Bind, nullptr, (void* handle, sockaddr_storage* address, long size, char* reserved),     \
      handle, address, size, reserved)                                                             \
  ROW(HLD_Bind_Url, nullptr, (void* handle, char* url, char* reserved),                            \
      handle, url, reserved)                                                                       \
  ROW(HLD_Listen, nullptr, (void* handle, long backlog, char* reserved),                           \
      handle, backlog, reserved)                                                                   \
  ROW(HLD_Accept, nullptr,                                                                         \
      (void* handle, void** accepted, sockaddr_storage* address, long* size, char* reserved),      \
      handle, accepted, address, size, reserved)                                                   \
  ROW(HLD_Connect, nullptr, (void* handle, sockaddr_storage* address, long size, char* reserved),  \
      handle, address, size, reserved)                                                             \
  ROW(HLD_Connect_Url, nullptr, (void* handle, char* url, char* reserved),                         \
      handle, url, reserved)                                                                       \
  ROW(HLD_EstablishSecure, nullptr, (void* handle, char* reserved),                                \
      handle, reserved)                                                                            \
  ROW(HLD_GetSockName, nullptr,                                                                    \
      (void* handle, sockaddr_storage* address, long* size, char* reserved),                       \
      handle, address, size, reserved)                                                             \
  ROW(HLD_GetPeerName, nullptr,                                                                    \
      (void* handle, sockaddr_storage* address, long* size, char* reserved),                       \
      handle, address, size, reserved)                                                             \
  ROW(HLD_GetSockOpt, nullptr,                                                                     \
      (void* handle, long option, void* value, long* size, char* reserved),                        \
      handle, option, value, size, reserved)                                                       \
  ROW(HLD_SetSockOpt, nullptr,                                                                     \
      (void* handle, long option, const void* value, long size, char* reserved),                   \
      handle, option, value, size, reserved)                                                       \
  ROW(HLD_Send, nullptr,                                                                           \
      (void* handle, const void* data, long size, long flags, long* sent, char* reserved),         \
      handle, data, size, flags, sent, reserved)                                                   \
  ROW(HLD_Recv, nullptr,                                                                           \
      (void* handle, void* data, long size, long flags, long* received, char* reserved),           \
      handle, data, size, flags, received, reserved)                                               \
  ROW(HLD_SocketSecurityOp, nullptr,                                                               \
      (void* handle, char* document, char** answer, char* reserved),                               \
      handle, document, answer, reserved)                                                          \
  ROW(HLD_Select, error,                                                                           \
      (HLD_Handle_Set* readable, HLD_Handle_Set* writable, HLD_Handle_Set* failed,                 \
       const timeval* timeout, long* ready, char* reserved, char** error),                         \
      readable, writable, failed, timeout, ready, reserved, error)                                 \
  ROW(HLD_Poll, error,                                                                             \
      (HLD_Pollfd* handles, long count, long timeout, char* reserved, char** error),               \
      handles, count, timeout, reserved, error)                                                    \
  ROW(HLD_CloseHandle, error, (void** handle, char* reserved, char** error),                       \
      handle, reserved, error)                                                                     \
  ROW(HLD_PersistentInitialize, error,                                                             \
      (void** handle, char* document, char* reserved, char** error),                               \
      handle, document, reserved, error)                                                           \
  ROW(HLD_SetInfo, nullptr, (void* handle, char* document, char* reserved),                        \
      handle, document, reserved)                                                                  \
  ROW(HLD_ProtectData, nullptr,                                                                    \
      (void* handle, void* data, unsigned long size, void** block, unsigned long* blockSize,       \
       char* reserved),                                                                            \
      handle, data, size, block, blockSize, reserved)                                              \
  ROW(HLD_UnprotectData, nullptr,                                                                  \
      (void* handle, void* data, unsigned long size, void** block, unsigned long* blockSize,       \
       char* reserved),                                                                            \
      handle, data, size, block, blockSize, reserved)                                              \
  ROW(HLD_GetInfo, nullptr, (void* handle, char* document, char** answer, char* reserved),         \
      handle, document, answer, reserved)                                                          \
  ROW(HLD_ImpUsrInitialize, error, (void** handle, char* document, char* reserved, char** error),  \
      handle, document, reserved, error)                                                           \
  ROW(HLD_ImpUsrNegotiate, nullptr, (void* handle, char* token, char** answer, char* reserved),    \
      handle, token, answer, reserved)                                                             \
  ROW(HLD_ImpUsrImpersonate, nullptr, (void* handle, char* reserved),                              \
      handle, reserved)                                                                            \
  ROW(HLD_ImpUsrRevert, nullptr, (void* handle, char* reserved),                                   \
      handle, reserved)                                                                            \
  ROW(HLD_ImpUsrSerializeHandle, nullptr, (void* handle, char** text, char* reserved),             \
      handle, text, reserved)                                                                      \
  ROW(HLD_ImpUsrDeserializeHandle, nullptr,                                                        \
      (char* text, void** handle, char** answer, char* reserved),                                  \
      text, handle, answer, reserved)                                                              \
  ROW(HLD_GetRandomData, nullptr, (unsigned long size, void* data, char* reserved),                \
      size, data, reserved)                                                                        \
  ROW(HLD_EncryptCredential, nullptr,                                                              \
      (void* data, unsigned long size, void* context, unsigned long contextSize,                   \
       unsigned long flags, void** block, unsigned long* blockSize, char* reserved),               \
      data, size, context, contextSize, flags, block, blockSize, reserved)                         \
  ROW(HLD_DecryptCredential, nullptr,                                                              \
      (void* data, unsigned long size, void* context, unsigned long contextSize, void** block,     \
       unsigned long* blockSize, char* reserved),                                                  \
      data, size, context, contextSize, block, blockSize, reserved)                                \
  ROW(HLD_KDRT_DecryptPassport, nullptr,                                                           \
      (void* data, unsigned long size, void** block, unsigned long* blockSize, char* reserved),    \
      data, size, block, blockSize, reserved)                                                      \
  ROW(AS_DecryptText, nullptr,                                                                     \
      (long scheme, unsigned long flags, int size, const char* text, int* clearSize, char* clear), \
      scheme, flags, size, text, clearSize, clear)
// clang-format on
