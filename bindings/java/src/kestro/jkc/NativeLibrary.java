package kestro.jkc;

import java.io.IOException;
import java.io.InputStream;
import java.nio.file.Files;
import java.nio.file.Path;

/** Finds and loads the native library. */
final class NativeLibrary {
    private static final String NAME = "jkc";
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

    private static void loadFromJar() throws IOException {
        try (InputStream copy = NativeLibrary.class.getResourceAsStream(FILE_NAME)) {
            if (copy == null) {
                throw new UnsatisfiedLinkError("there is none");
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
}
