package com.zandor.vrdcfgapi;

/**
 * The environment of this process, as the native configuration library sees it.
 *
 * <p>{@link System#getenv(String)} shows the environment that the virtual machine was started with;
 * the methods of this class change and show the one that native code works with. A process that
 * starts Java without {@code ZAN_ROOT} names its installation like this, before any native code asks
 * for its configuration:
 *
 * <pre>{@code
 * jniCFGAPI.jniSetZanRoot("/opt/server");
 * }</pre>
 *
 * <p>The first use of this class loads {@code libVRDCFGAPI.so}, from the folders of the system
 * property {@code java.library.path} or of the system.
 *
 * <p><b>Arguments</b> are never null: a null one ends the virtual machine. The characters of a text
 * reach the environment in the virtual machine's modified UTF-8, which is plain UTF-8 but for the
 * character U+0000 and those beyond U+FFFF.
 *
 * <p><b>Threads.</b> Each method is called from one thread at a time, and while no other thread
 * changes the environment. Callers see to that.
 */
public final class jniCFGAPI {
    static {
        System.loadLibrary("VRDCFGAPI");
    }

    /** Everything here belongs to the process: there are no objects. */
    private jniCFGAPI() {}

    /**
     * Puts {@code ZAN_ROOT} into the environment of this process, in place of an earlier value.
     *
     * <p>The library looks for its installation once, when it first needs a path: a later call
     * changes the environment, but not the installation that was found.
     *
     * @param path the root folder of the installation; if it is empty, so is the variable
     */
    public static native void jniSetZanRoot(String path);

    /**
     * Reads an environment variable.
     *
     * @param name the name of the variable
     * @return its value, which may be empty; null if it is not set
     */
    public static native String jniGetEnvVariable(String name);
}
