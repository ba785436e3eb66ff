package kestro.jkc;

import java.lang.System.Logger.Level;
import java.nio.charset.Charset;
import java.nio.charset.spi.CharsetProvider;
import java.util.HashMap;
import java.util.Iterator;
import java.util.List;
import java.util.Locale;
import java.util.Map;

/**
 * Offers the code types as charsets: {@code Charset.forName("eucJP-ms")}. Java finds it by itself where jkc.jar is on the
 * class path or the module path of the application.
 *
 * <p>Charsets that Java lacks have their own names: {@code eucJP-ms}, {@code CP51932}, {@code x-windows-20932}, {@code
 * ISO-2022-JP-2004}. Each has a name that begins with {@code x-jkc-} too. They may be used by any number of threads at once,
 * each coder by one at a time. Where the native library cannot be loaded there are none of them, and a warning is logged.
 */
public final class JkcCharsetProvider extends CharsetProvider {
    /** Made by Java itself. */
    public JkcCharsetProvider() {}

    /** By all names, in small letters. */
    private static final class Names {
        static final Map<String, Charset> ALL = new HashMap<>();

        static {
            for (JkcCharset charset : JkcCharset.ALL) {
                ALL.put(charset.name().toLowerCase(Locale.ROOT), charset);
                charset.aliases().forEach(alias -> ALL.put(alias.toLowerCase(Locale.ROOT), charset));
            }
        }
    }

    /** Whether the library is there: found out when it matters. */
    private static final class Library {
        static final boolean IS_THERE = load();

        private static boolean load() {
            try {
                Jkc.load();
                return true;
            } catch (LinkageError e) {
                System.getLogger("kestro.jkc").log(Level.WARNING, "The charsets of libjkc are not there", e);
                return false;
            }
        }
    }

    @Override
    public Iterator<Charset> charsets() {
        return List.<Charset>copyOf(Library.IS_THERE ? JkcCharset.ALL : List.of()).iterator();
    }

    @Override
    public Charset charsetForName(String name) {
        Charset charset = Names.ALL.get(name.toLowerCase(Locale.ROOT));
        return charset != null && Library.IS_THERE ? charset : null;
    }
}
