package kestro.jkc;

import static org.junit.Assert.assertTrue;

import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import org.junit.Test;

/** What the native side allocates is freed, however an object ends. An object takes about 700 bytes. */
public class MemoryTest {
    private static final int OBJECTS = 10_000;
    private static final int ROUNDS = 10;
    private static final long FAR_LESS_THAN_A_LEAK = 1_000_000;

    private static final byte[] TEXT = "text".getBytes();

    @Test
    public void closedObjectsLeaveNothing() throws IOException, InterruptedException {
        assertSteady(() -> {
            try (Transcoder transcoder = new Transcoder()) {
                transcoder.encode("text", CodeType.SJIS);
            }
        });
    }

    @Test
    public void objectsThatAreNeverClosedAreFreedAllTheSame() throws IOException, InterruptedException {
        assertSteady(() -> new Transcoder().encode("text", CodeType.SJIS));
    }

    @Test
    public void callsThatThrowLeaveNothing() throws IOException, InterruptedException {
        Jkc jkc = new Jkc();
        jkc._createJkc();
        assertSteady(() -> {
            try {
                jkc.convertStream(new ByteArrayInputStream(TEXT), 4, 15, false, null, (data, length, user) -> {
                    throw new IllegalArgumentException();
                }, null);
            } catch (IllegalArgumentException e) {
                jkc.judgesBuffer(null, null, TEXT, TEXT.length, 0);
            }
        });
        jkc._releaseJkc();
    }

    /** A leak shows in every round, the growth of the virtual machine itself in some. */
    private static void assertSteady(Runnable use) throws IOException, InterruptedException {
        long least = Long.MAX_VALUE;
        for (int round = 0; round < ROUNDS && least > FAR_LESS_THAN_A_LEAK; ++round) {
            long before = resident();
            repeat(use);
            least = Math.min(least, resident() - before);
        }
        assertTrue("each time " + OBJECTS + " objects left " + least + " bytes", least < FAR_LESS_THAN_A_LEAK);
    }

    private static void repeat(Runnable use) throws InterruptedException {
        for (int i = 0; i < OBJECTS; ++i) {
            use.run();
        }
        System.gc();
        Thread.sleep(500); // for the cleaner
    }

    private static long resident() throws IOException {
        String[] pages = Files.readString(Path.of("/proc/self/statm")).split(" ");
        return Long.parseLong(pages[1]) * 4096;
    }
}
