// The provider as its callers see it: every entry point of the table, with C linkage. Those that
// are not offered answer -1 and say so.

#include <atomic>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

#include "crypto/ProviderEntryPoints.h"
#include "provider/Cipher.h"
#include "provider/ErrorDocument.h"
#include "provider/GivenMemory.h"
#include "provider/ProtectedBlock.h"
#include "provider/Session.h"

namespace {

constexpr int done = 0;
constexpr int negativeStatus = -1;

/// How often the provider was initialised and not terminated. Counted, as two users in one process,
/// a library and a program of its own, know nothing of each other. It keeps nothing open: sessions
/// end with their handles.
std::atomic<long> uses{0};

/// The caller did not keep to the interface.
class BadCall : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Does @p work and turns whatever it throws into a status: no exception leaves this library.
template <class Work>
int answer(const char* operation, char** error, Work work) noexcept {
  try {
    // A caller who looks at the document and not at the status shall not meet an old one.
    if (error != nullptr) *error = nullptr;
    work();
    return done;
  } catch (const std::exception& failure) {
    reportFailure(operation, failure.what(), error);
  } catch (...) {
    reportFailure(operation, "unknown", error);
  }
  return negativeStatus;
}

template <class... Unused>
int refuse(const char* operation, char** error, const Unused&...) noexcept {
  reportFailure(operation, "this provider does not offer the operation", error);
  return negativeStatus;
}

/// Control documents come from programs and have one form each, without white space between their
/// elements. So a comparison of text does, and nothing here has to parse.
bool contains(const char* document, const char* part) {
  return std::strstr(document, part) != nullptr;
}

void requireRoot(const char* document, const char* root) {
  const std::string tag = std::string("<") + root + ">";
  if (document == nullptr || std::strncmp(document, tag.c_str(), tag.size()) != 0) {
    throw BadCall(std::string("the control document has to be a ") + root);
  }
}

/// A wrong pointer cannot be told from a good one, but a forgotten one can.
template <class Pointer>
void requirePointer(Pointer* pointer, const char* what) {
  if (pointer == nullptr) throw BadCall(std::string(what) + " is a null pointer");
}

Session& sessionOf(void* handle) {
  requirePointer(handle, "the handle");
  return *static_cast<Session*>(handle);
}

/// What protecting and its reverse have in common: data in, a block out, which is null and empty
/// after a failure.
template <class Transform>
int transform(const char* operation, void* handle, const void* data, unsigned long size,
              void** block, unsigned long* blockSize, Transform transformation) {
  // Before anything can fail.
  if (block != nullptr) *block = nullptr;
  if (blockSize != nullptr) *blockSize = 0;
  return answer(operation, nullptr, [&] {
    requirePointer(block, "the block's place");
    requirePointer(blockSize, "the block size's place");
    if (size > 0) requirePointer(data, "the data");
    Given result =
        transformation(sessionOf(handle).keys(), {static_cast<const unsigned char*>(data), size});
    // Nothing throws any more, so the memory has one owner at any time.
    *blockSize = result.size;
    *block = result.memory.release();
  });
}

/// All entry points, refused. Their error document goes where the table says there is room for one;
/// the others keep it for who asks for the last failure.
struct NothingOffered {
#define VRD_REFUSE(NAME, ERROR_OUT, PARAMETERS, ...) \
  static int NAME PARAMETERS { return refuse(#NAME, ERROR_OUT, __VA_ARGS__); }
  VRD_PROVIDER_ENTRY_POINTS(VRD_REFUSE)
#undef VRD_REFUSE
};

/// What is offered hides the refusal of the same name. A row that is added to the table is thus
/// exported and refused until it is written here.
struct Offered : NothingOffered {
  static int HLD_CryptoInitialize(char* document, char*, char** error) {
    return answer("HLD_CryptoInitialize", error, [&] {
      requireRoot(document, "initializeDocument");
      // Now, as the first use of a cipher costs milliseconds, and to fail early where it is
      // missing.
      Cipher::start();
      ++uses;
    });
  }

  static int HLD_CryptoTerminate(char* document, char*, char** error) {
    return answer("HLD_CryptoTerminate", error, [&] {
      requireRoot(document, "terminateDocument");
      long before = uses;
      do {
        if (before == 0) throw BadCall("the provider is not initialised");
      } while (!uses.compare_exchange_weak(before, before - 1));
    });
  }

  /// Cannot fail, and leaves the last failure as it is: error documents come back through here.
  static int HLD_CryptoFree(void* memory, char*) {
    releaseGiven(memory);
    return done;
  }

  /// Failures are kept for each thread, whatever the handle.
  static int HLD_CryptoGetLastErrorDetails(void*, char*, char** error) {
    return answer("HLD_CryptoGetLastErrorDetails", error, [&] {
      requirePointer(error, "the error document's place");
      *error = lastFailure();
    });
  }

  static int HLD_CloseHandle(void** handle, char*, char** error) {
    return answer("HLD_CloseHandle", error, [&] {
      requirePointer(handle, "the handle's place");
      delete &sessionOf(*handle);
      *handle = nullptr;
    });
  }

  static int HLD_PersistentInitialize(void** handle, char* document, char*, char** error) {
    return answer("HLD_PersistentInitialize", error, [&] {
      requirePointer(handle, "the handle's place");
      *handle = nullptr;
      requireRoot(document, "sessionConfigDocument");
      if (uses == 0) throw BadCall("the provider is not initialised");
      *handle = Session::open().release();
    });
  }

  /// The one setting that there is says what a session does anyway, so nothing is kept of it; a
  /// caller who wants something else has to know that he does not get it.
  static int HLD_SetInfo(void* handle, char* document, char*) {
    return answer("HLD_SetInfo", nullptr, [&] {
      sessionOf(handle);
      requireRoot(document, "setInfoDocument");
      if (!contains(document, "<action>CSKEncrypt</action>") ||
          !contains(document, "<dataLocation>memory</dataLocation>")) {
        throw BadCall("the only action is CSKEncrypt, and the only data location is memory");
      }
    });
  }

  static int HLD_ProtectData(void* handle, void* data, unsigned long size, void** block,
                             unsigned long* blockSize, char*) {
    return transform("HLD_ProtectData", handle, data, size, block, blockSize, protectBlock);
  }

  static int HLD_UnprotectData(void* handle, void* data, unsigned long size, void** block,
                               unsigned long* blockSize, char*) {
    return transform("HLD_UnprotectData", handle, data, size, block, blockSize, unprotectBlock);
  }

  static int HLD_GetRandomData(unsigned long size, void* data, char*) {
    return answer("HLD_GetRandomData", nullptr, [&] {
      if (size > 0) requirePointer(data, "the data's place");
      Cipher::random(static_cast<unsigned char*>(data), size);
    });
  }
};

}  // namespace

#define VRD_EXPORT_ENTRY_POINT(NAME, ERROR_OUT, PARAMETERS, ...)          \
  extern "C" __attribute__((visibility("default"))) int NAME PARAMETERS { \
    return Offered::NAME(__VA_ARGS__);                                    \
  }
VRD_PROVIDER_ENTRY_POINTS(VRD_EXPORT_ENTRY_POINT)
#undef VRD_EXPORT_ENTRY_POINT
