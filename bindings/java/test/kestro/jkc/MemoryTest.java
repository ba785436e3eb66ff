package kestro.jkc;

import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import java.nio.file.Files;
import java.nio.file.Path;
import org.junit.Test;

/** What the native side allocates is freed, however an object ends. The smallest block of an object has 48 bytes. */
public class MemoryTest {
    private static final int OBJECTS = 10_000;
    private static final int ROUNDS = 10;
    private static final long FAR_LESS_THAN_A_LEAK = 300_000;

    @Test
    public void objectsLeaveNothingWhetherTheyAreClosedOrNot() throws Exception {
        for (boolean closes : new boolean[] {true, false}) {
            assertSteady(() -> {
                Transcoder transcoder = new Transcoder();
                transcoder.encode("text", CodeType.SJIS);
                if (closes) {
                    transcoder.close();
                }
            });
        }
    }

    @Test
    public void callsThatThrowLeaveNothing() throws Exception {
        Jkc jkc = new Jkc();
        jkc._createJkc();
        assertSteady(() -> assertThrows(IllegalArgumentException.class,
                () -> jkc.convertBuffer("text".getBytes(), 4, 4, 15, false, null, (data, length, user) -> {
                    throw new IllegalArgumentException();
                }, null)));
        jkc._releaseJkc();
    }

    /** A leak shows in every round, the growth of the virtual machine itself in some. */
    private static void assertSteady(Runnable use) throws Exception {
        long least = Long.MAX_VALUE;
        for (int round = 0; round < ROUNDS && least > FAR_LESS_THAN_A_LEAK; ++round) {
            long before = residentBytes();
            for (int i = 0; i < OBJECTS; ++i) {
                use.run();
            }
            System.gc();
            Thread.sleep(500); // for the cleaner
            least = Math.min(least, residentBytes() - before);
        }
        assertTrue("each time " + OBJECTS + " objects left " + least + " bytes", least < FAR_LESS_THAN_A_LEAK);
    }

    private static long residentBytes() throws Exception {
        return Long.parseLong(Files.readString(Path.of("/proc/self/statm")).split(" ")[1]) * 4096;
    }
}
