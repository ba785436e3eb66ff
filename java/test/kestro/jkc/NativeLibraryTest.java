package kestro.jkc;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertTrue;

import java.io.File;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import org.junit.Test;

public class NativeLibraryTest {
    private static final String JAR = System.getProperty("jkc.jar");
    private static final String CLASSES = System.getProperty("jkc.classes");
    private static final Path LIBRARY = Path.of(System.getProperty("jkc.library"));

    /** Says from which file the library was loaded. */
    public static final class Where {
        private Where() {}

        public static void main(String[] arguments) throws IOException {
            new Transcoder().close();
            Files.lines(Path.of("/proc/self/maps")).filter(line -> line.contains("libjkc")).findFirst()
                    .ifPresent(line -> System.out.println(line.substring(line.indexOf('/'))));
        }
    }

    @Test
    public void placesAreTriedInTheirOrder() throws IOException, InterruptedException {
        Path folder = Files.createTempDirectory("jkc");
        Path copy = Files.copy(LIBRARY, folder.resolve("libjkc.so"));
        String property = "-Dkestro.jkc.library=" + LIBRARY;
        String broken = "-Dkestro.jkc.library=/nowhere/libjkc.so";
        String path = "-Djava.library.path=" + folder;

        assertEquals(LIBRARY.toString(), where(JAR, property, path));
        assertEquals(copy.toString(), where(JAR, path));
        assertEquals(copy.toString(), where(JAR, broken, path));
        String unpacked = where(JAR, broken);
        assertTrue(unpacked, unpacked.startsWith(System.getProperty("java.io.tmpdir")) && unpacked.endsWith("(deleted)"));

        String error = where(CLASSES, broken);
        for (String place : List.of("kestro.jkc.library", "/nowhere/libjkc.so", "java.library.path", "the jar")) {
            assertTrue(error, error.contains(place));
        }

        // A library of this name without the native methods, such as one built without Java.
        Files.delete(copy);
        Files.copy(Path.of("/proc/self/exe").toRealPath().resolveSibling("../lib/libjava.so"), copy);
        assertTrue(where(JAR, path).endsWith("(deleted)"));
        Files.delete(copy);
        Files.delete(folder);
    }

    private static String where(String classPath, String... options) throws IOException, InterruptedException {
        List<String> command = new ArrayList<>(List.of(System.getProperty("java.home") + "/bin/java", "-Xcheck:jni",
                "-cp", classPath + File.pathSeparator + System.getProperty("jkc.test.classes")));
        command.addAll(List.of(options));
        command.add(Where.class.getName());
        Process process = new ProcessBuilder(command).redirectErrorStream(true).start();
        return new String(process.getInputStream().readAllBytes()).strip();
    }
}
