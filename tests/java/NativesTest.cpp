// The Java class with its natives, in a real virtual machine.

#include <gmock/gmock.h>
#include <jni.h>
#include <unistd.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/Installation.h"
#include "tests/support/Store.h"

namespace {

/// The class in the process's one virtual machine. Texts are UTF-8 without characters that the
/// virtual machine writes in another way.
class Natives {
 public:
  static Natives& instance() {
    static Natives natives;
    return natives;
  }

  void setZanRoot(const std::string& path) {
    m_env->CallStaticVoidMethod(m_class, m_setZanRoot, text(path));
    requireNoException();
  }

  std::optional<std::string> getEnvVariable(const std::string& name) {
    auto* const value =
        static_cast<jstring>(m_env->CallStaticObjectMethod(m_class, m_getEnvVariable, text(name)));
    requireNoException();
    if (value == nullptr) return std::nullopt;
    const char* const characters = m_env->GetStringUTFChars(value, nullptr);
    std::string result = characters;
    m_env->ReleaseStringUTFChars(value, characters);
    return result;
  }

 private:
  Natives()
      : m_env(start()),
        m_class(m_env->FindClass("com/zandor/vrdcfgapi/jniCFGAPI")),
        m_setZanRoot(method("jniSetZanRoot", "(Ljava/lang/String;)V")),
        m_getEnvVariable(method("jniGetEnvVariable", "(Ljava/lang/String;)Ljava/lang/String;")) {}

  static JNIEnv* start() {
    std::string classPath = "-Djava.class.path=" VRD_JAR;
    std::string libraryPath = "-Djava.library.path=" VRD_LIBRARIES;
    std::string check = "-Xcheck:jni";
    JavaVMOption options[] = {
        {classPath.data(), nullptr}, {libraryPath.data(), nullptr}, {check.data(), nullptr}};
    JavaVMInitArgs arguments{JNI_VERSION_10, 3, options, JNI_FALSE};
    JavaVM* machine = nullptr;
    void* env = nullptr;
    if (JNI_CreateJavaVM(&machine, &env, &arguments) != JNI_OK) {
      throw std::runtime_error("no virtual machine");
    }
    return static_cast<JNIEnv*>(env);
  }

  jmethodID method(const char* name, const char* signature) {
    requireNoException();
    auto* const result = m_env->GetStaticMethodID(m_class, name, signature);
    requireNoException();
    return result;
  }

  jstring text(const std::string& utf8) {
    auto* const result = m_env->NewStringUTF(utf8.c_str());
    requireNoException();
    return result;
  }

  void requireNoException() {
    if (!m_env->ExceptionCheck()) return;
    m_env->ExceptionDescribe();
    throw std::runtime_error("a Java exception");
  }

  JNIEnv* m_env;
  jclass m_class;
  jmethodID m_setZanRoot;
  jmethodID m_getEnvVariable;
};

std::vector<std::string> environment() {
  std::vector<std::string> entries;
  for (char** entry = environ; *entry != nullptr; ++entry) entries.emplace_back(*entry);
  return entries;
}

TEST(JavaNatives, GiveNullForAnUnsetVariableAndEmptyForAnEmptyOne) {
  const EnvironmentGuard unset("VRD_UNSET", nullptr);
  const EnvironmentGuard empty("VRD_EMPTY", "");
  const EnvironmentGuard some("VRD_住所", "千代田区 = ä");
  EXPECT_EQ(Natives::instance().getEnvVariable("VRD_UNSET"), std::nullopt);
  EXPECT_EQ(Natives::instance().getEnvVariable("VRD_EMPTY"), "");
  EXPECT_EQ(Natives::instance().getEnvVariable("VRD_住所"), "千代田区 = ä");
}

TEST(JavaNatives, LastRootIsTheOneEntryOfTheEnvironment) {
  const EnvironmentGuard none("ZAN_ROOT", nullptr);
  Natives& natives = Natives::instance();
  const std::vector<std::string> before = environment();
  // The text moves as it grows; the environment must never be left with where it was.
  for (const std::string& root :
       {std::string("/a"), std::string(), std::string("/opt/installation"), std::string(500, 'r'),
        std::string(5000, 'r'), std::string("/b"), std::string("/srv/千代田区")}) {
    natives.setZanRoot(root);
    EXPECT_EQ(natives.getEnvVariable("ZAN_ROOT"), root);
    std::vector<std::string> expected = before;
    expected.push_back("ZAN_ROOT=" + root);
    EXPECT_THAT(environment(), testing::UnorderedElementsAreArray(expected));
  }
}

TEST(JavaNatives, RootLeadsTheStoreToTheInstallation) {
  const Installation installation(parameter("name", "of the installation that Java set"));
  const EnvironmentGuard noBin("ZAN_EXEC_PATH", nullptr);
  Natives::instance().setZanRoot(installation.path().string());
  EXPECT_EQ(textOf("name"), "of the installation that Java set");
}

}  // namespace
