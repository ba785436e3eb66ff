package kestro.jkc;

import static org.junit.Assert.*;

import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.Charset;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import org.junit.Test;

/** What the native side allocates is freed, however an object or call ends. An object's smallest block has 48 bytes. */
public class MemoryTest {
    private static final int USES = 10_000;
    private static final int ROUNDS = 10;
    private static final long FAR_LESS_THAN_A_LEAK = 300_000;

    @Test
    public void nothingIsLeft() throws Exception {
        Jkc jkc = new Jkc();
        jkc._createJkc();
        Charset charset = Charset.forName("eucJP-ms");
        for (Runnable use : List.<Runnable>of(() -> new Transcoder().encode("text", CodeType.SJIS), () -> {
            try (Transcoder transcoder = new Transcoder()) {
                transcoder.encode("text", CodeType.SJIS);
            }
        }, () -> assertEquals("text", new String("text".getBytes(charset), charset)), () -> {
            charset.newDecoder().decode(ByteBuffer.wrap(new byte[1]), CharBuffer.allocate(1), true); // is never flushed
        }, () -> assertThrows(IllegalArgumentException.class,
                () -> jkc.convertBuffer("text".getBytes(), 4, 4, 15, false, null, (data, length, user) -> {
                    throw new IllegalArgumentException();
                }, null)))) {
            // A leak shows in every round, the growth of the virtual machine itself in some.
            long least = Long.MAX_VALUE;
            for (int round = 0; round < ROUNDS && least > FAR_LESS_THAN_A_LEAK; ++round) {
                long before = residentBytes();
                for (int i = 0; i < USES; ++i) {
                    use.run();
                }
                System.gc();
                Thread.sleep(500); // for the cleaner
                least = Math.min(least, residentBytes() - before);
            }
            assertTrue("each time " + USES + " uses left " + least + " bytes", least < FAR_LESS_THAN_A_LEAK);
        }
        jkc._releaseJkc();
    }

    private static long residentBytes() throws Exception {
        return Long.parseLong(Files.readString(Path.of("/proc/self/statm")).split(" ")[1]) * 4096;
    }
}
