import com.zandor.vrdcfgapi.jniCFGAPI;

/** Names the installation to the native code of this process. */
public final class Client {
    public static void main(String[] arguments) {
        jniCFGAPI.jniSetZanRoot(arguments[0]);
        System.out.println(jniCFGAPI.jniGetEnvVariable("ZAN_ROOT"));
    }
}
