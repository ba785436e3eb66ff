package kestro.jkc;

import java.io.IOException;
import java.io.InputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;
import java.util.Arrays;
import java.util.Locale;
import java.util.zip.CRC32;

/** Finds and loads the native library. */
final class NativeLibrary {
    private static final String PLATFORM = platform(System.getProperty("os.name"), System.getProperty("os.arch"));
    private static final boolean ON_WINDOWS = PLATFORM.startsWith("windows-");
    private static final String NAME = ON_WINDOWS ? "libjkc" : "jkc";
    private static final String PROPERTY = "kestro.jkc.library";
    private static final String FILE_NAME = System.mapLibraryName(NAME);

    private NativeLibrary() {}

    private interface Place {
        void load() throws IOException;
    }

    /**
     * Loads from the first place that has a library with which {@code probe} works.
     *
     * @throws UnsatisfiedLinkError naming every place that was tried
     */
    static void load(Runnable probe) {
        StringBuilder tried = new StringBuilder();
        if (!loads("the system property " + PROPERTY, NativeLibrary::loadFromProperty, probe, tried)
                && !loads("java.library.path", () -> System.loadLibrary(NAME), probe, tried)
                && !loads("the copy inside the jar", NativeLibrary::loadFromJar, probe, tried)) {
            throw new UnsatisfiedLinkError("the native library " + FILE_NAME + " could not be loaded; tried" + tried);
        }
    }

    private static boolean loads(String name, Place place, Runnable probe, StringBuilder tried) {
        try {
            place.load();
            probe.run();
            return true;
        } catch (UnsatisfiedLinkError e) {
            tried.append("\n  ").append(name).append(": ").append(e.getMessage());
        } catch (IOException e) {
            tried.append("\n  ").append(name).append(": ").append(e);
        }
        return false;
    }

    private static void loadFromProperty() {
        String file = System.getProperty(PROPERTY);
        if (file == null) {
            throw new UnsatisfiedLinkError("not set");
        }
        System.load(Path.of(file).toAbsolutePath().toString());
    }

    /** The folder of the jar that has the library for a system, told as the virtual machine tells it. */
    static String platform(String system, String processor) {
        String name = system.toLowerCase(Locale.ROOT);
        return (name.startsWith("windows") ? "windows" : name.startsWith("mac") ? "macos" : name) + "-"
                + (processor.equals("amd64") ? "x86_64" : processor);
    }

    private static void loadFromJar() throws IOException {
        try (InputStream copy = NativeLibrary.class.getResourceAsStream(PLATFORM + "/" + FILE_NAME)) {
            if (copy == null) {
                throw new UnsatisfiedLinkError("there is none for " + PLATFORM);
            }
            if (ON_WINDOWS) {
                System.load(keep(copy.readAllBytes(), Path.of(System.getProperty("java.io.tmpdir"))).toString());
                return;
            }
            Path folder = Files.createTempDirectory(NAME);
            Path file = folder.resolve(FILE_NAME);
            try {
                Files.copy(copy, file);
                System.load(file.toString());
            } finally {
                // A loaded library does not need its file any more.
                Files.deleteIfExists(file);
                Files.deleteIfExists(folder);
            }
        }
    }

    /**
     * Puts a library into a folder, where it stays: Windows does not let one be deleted that is in use, so all that use it
     * share it.
     */
    static Path keep(byte[] library, Path folder) throws IOException {
        CRC32 sum = new CRC32();
        sum.update(library);
        Path file = folder.toAbsolutePath().resolve(String.format("%s-%08x.dll", NAME, sum.getValue()));
        if (!holds(file, library)) {
            Path whole = Files.write(Files.createTempFile(folder, NAME, null), library);
            try {
                Files.move(whole, file, StandardCopyOption.ATOMIC_MOVE);
            } catch (IOException e) {
                Files.delete(whole);
                if (!holds(file, library)) { // another process was not first, either
                    throw e;
                }
            }
        }
        return file;
    }

    private static boolean holds(Path file, byte[] content) throws IOException {
        return Files.exists(file) && Arrays.equals(Files.readAllBytes(file), content);
    }
}
