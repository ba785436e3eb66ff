package kestro.jkc;

import static org.junit.Assert.*;

import java.nio.charset.Charset;
import java.nio.file.*;
import java.util.*;
import org.junit.Test;

public class NativeLibraryTest {
    /** Says which files were loaded, or why none was, and whether there are charsets. */
    public static void main(String[] arguments) throws Exception {
        try {
            new Transcoder().close();
        } catch (UnsatisfiedLinkError e) {
            System.out.println(e.getMessage());
        }
        if (!Charset.isSupported("eucJP-ms") && Charset.isSupported("windows-31j")) {
            System.out.println("no charsets");
        }
        Files.readString(Path.of("/proc/self/maps")).lines().filter(line -> line.contains("libjkc"))
                .map(line -> line.substring(line.indexOf('/'))).distinct().forEach(System.out::println);
    }

    @Test
    public void placesAreTriedInTheirOrder() throws Exception {
        String jar = System.getProperty("jkc.jar");
        Path library = Path.of(System.getProperty("jkc.library"));
        Path folder = Files.createTempDirectory("jkc");
        Path copy = Files.copy(library, folder.resolve("libjkc.so"));
        String property = "-Dkestro.jkc.library=" + library;
        String broken = "-Dkestro.jkc.library=/nowhere/libjkc.so";
        String path = "-Djava.library.path=" + folder;

        assertEquals(library.toString(), where(jar, property, path));
        assertEquals(copy.toString(), where(jar, broken, path));
        String unpacked = where(jar, broken);
        assertTrue(unpacked, unpacked.endsWith("/libjkc.so (deleted)"));

        // A library of this name without the native methods, such as one built without Java.
        Path other = Path.of(System.getProperty("java.home"), "lib", "libjava.so");
        Files.copy(other, copy, StandardCopyOption.REPLACE_EXISTING);
        String both = where(jar, path);
        assertTrue(both, both.contains(copy.toString()) && both.contains("(deleted)"));
        Files.delete(copy);
        Files.delete(folder);

        String error = where(System.getProperty("jkc.classes"), broken);
        for (String place : List.of("no charsets", "kestro.jkc.library", "/nowhere/libjkc.so", "java.library.path",
                     "the jar")) {
            assertTrue(error, error.contains(place));
        }
    }

    @Test
    public void eachSystemHasItsFolderInTheJar() {
        assertEquals("linux-x86_64", NativeLibrary.platform("Linux", "amd64"));
        assertEquals("linux-aarch64", NativeLibrary.platform("Linux", "aarch64"));
        assertEquals("windows-x86_64", NativeLibrary.platform("Windows Server 2022", "amd64"));
        assertEquals("macos-aarch64", NativeLibrary.platform("Mac OS X", "aarch64"));
    }

    @Test
    public void aLibraryThatStaysIsSharedAndMadeWhole() throws Exception {
        Path folder = Files.createTempDirectory("jkc");
        Path file = NativeLibrary.keep(new byte[] {1, 2, 3}, folder);
        Files.write(file, new byte[] {1, 2});
        assertEquals(file, NativeLibrary.keep(new byte[] {1, 2, 3}, folder));
        assertArrayEquals(new byte[] {1, 2, 3}, Files.readAllBytes(file));
        Path other = NativeLibrary.keep(new byte[] {4}, folder);
        assertNotEquals(file, other);
        for (Path made : List.of(file, other, folder)) { // the last one empty, so that nothing else was left
            Files.delete(made);
        }
    }

    private static String where(String classPath, String... options) throws Exception {
        List<String> command = new ArrayList<>(List.of(System.getProperty("java.home") + "/bin/java", "-cp",
                classPath + ":" + System.getProperty("jkc.test.classpath")));
        command.addAll(List.of(options));
        command.add(NativeLibraryTest.class.getName());
        Process process = new ProcessBuilder(command).redirectError(ProcessBuilder.Redirect.INHERIT).start();
        return new String(process.getInputStream().readAllBytes()).strip();
    }
}
