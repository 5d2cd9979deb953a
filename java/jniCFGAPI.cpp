// The native methods of the Java class com.zandor.vrdcfgapi.jniCFGAPI. Each works on its one string
// and takes no lock, so each is called from one thread at a time.

#include <jni.h>
#include <stdlib.h>

#include "platform/core/I18NString.h"

namespace {

constexpr char beginning[] = "ZAN_ROOT=";

/// The environment entry. The environment holds a pointer to this text, not a copy of it.
I18NString jniCFGAPI_ZAN_ROOT;
/// The name of the variable last asked for.
I18NString jniCFGAPI_ENV_VAR;

/// Takes our entry, and nobody else's, out of the environment. Whoever reads or extends the
/// environment looks at every entry, so the text of ours must not change or end while it is one.
void withdrawRoot() {
  if (jniCFGAPI_ZAN_ROOT.empty()) return;
  const char* const value = jniCFGAPI_ZAN_ROOT.c_str() + sizeof beginning - 1;
  if (::getenv("ZAN_ROOT") == value) ::unsetenv("ZAN_ROOT");
}

/// Declared behind the strings, so that at exit it ends before them.
struct WithdrawalAtExit {
  WithdrawalAtExit() = default;
  WithdrawalAtExit(const WithdrawalAtExit&) = delete;
  WithdrawalAtExit& operator=(const WithdrawalAtExit&) = delete;
  ~WithdrawalAtExit() { withdrawRoot(); }
};
const WithdrawalAtExit g_withdrawalAtExit;

}  // namespace

extern "C" {

JNIEXPORT void JNICALL Java_com_zandor_vrdcfgapi_jniCFGAPI_jniSetZanRoot(JNIEnv* env, jclass,
                                                                         jstring path) {
  const char* const characters = env->GetStringUTFChars(path, nullptr);
  withdrawRoot();
  jniCFGAPI_ZAN_ROOT = beginning;
  jniCFGAPI_ZAN_ROOT += I18NString(characters);
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): putenv does not change the text
  ::putenv(const_cast<char*>(jniCFGAPI_ZAN_ROOT.c_str()));
  env->ReleaseStringUTFChars(path, characters);
}

JNIEXPORT jstring JNICALL Java_com_zandor_vrdcfgapi_jniCFGAPI_jniGetEnvVariable(JNIEnv* env, jclass,
                                                                                jstring name) {
  const char* const characters = env->GetStringUTFChars(name, nullptr);
  jniCFGAPI_ENV_VAR = I18NString(characters);
  const char* const value = ::getenv(jniCFGAPI_ENV_VAR.c_str());
  env->ReleaseStringUTFChars(name, characters);
  return value == nullptr ? nullptr : env->NewStringUTF(value);
}

}  // extern "C"
