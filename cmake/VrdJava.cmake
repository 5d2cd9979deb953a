# The JDK: jni.h for the library's native methods, the compiler for the Java class that declares them,
# a virtual machine for the tests.

find_package(Java 11 REQUIRED COMPONENTS Development)
# FindJNI knows JAVA_HOME and a few fixed folders; the JDK of the compiler suits in any case.
if(NOT JAVA_HOME AND NOT DEFINED ENV{JAVA_HOME})
  file(REAL_PATH "${Java_JAVAC_EXECUTABLE}" javaCompiler)
  cmake_path(GET javaCompiler PARENT_PATH javaPrograms)
  cmake_path(GET javaPrograms PARENT_PATH JAVA_HOME)
endif()
find_package(JNI REQUIRED COMPONENTS JVM)
