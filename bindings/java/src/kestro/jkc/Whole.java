package kestro.jkc;

import java.util.Arrays;

/** Texts that are converted in memory at once. */
final class Whole {
    private Whole() {}

    /** Output for which room is made as it comes. */
    private static final class Output {
        private byte[] bytes;
        private int length;

        Output(long likely) {
            bytes = new byte[(int) Math.min(likely, Integer.MAX_VALUE - 16)];
        }

        int room() {
            return bytes.length - length;
        }

        /** Takes what a run wrote, and tells whether there is more to come. */
        boolean take(FedConverter fed, int how) {
            length += fed.written();
            if (how == FedConverter.FAILED) {
                throw fed.failure();
            }
            if (how == FedConverter.OUTPUT) {
                bytes = Arrays.copyOf(bytes, Math.multiplyExact(2, bytes.length));
            }
            return how != FedConverter.END;
        }

        byte[] take() {
            return Arrays.copyOf(bytes, length);
        }
    }

    static String decode(FedConverter fed, byte[] data) {
        char[] out = new char[data.length + 16]; // mostly no byte becomes more
        int length = 0;
        int how = FedConverter.INPUT;
        for (int done = 0; how != FedConverter.END; done += fed.taken()) {
            how = fed.run(data, done, data.length - done, out, length, out.length - length, true);
            length += fed.written();
            if (how == FedConverter.FAILED) {
                throw fed.failure();
            }
            if (how == FedConverter.OUTPUT) {
                out = Arrays.copyOf(out, Math.multiplyExact(2, out.length));
            }
        }
        return new String(out, 0, length);
    }

    static byte[] encode(FedConverter fed, char[] text) {
        Output out = new Output(2L * text.length + 64);
        int done = 0;
        while (out.take(fed, fed.run(text, done, text.length - done, out.bytes, out.length, out.room(), true))) {
            done += fed.taken();
        }
        return out.take();
    }

    static byte[] convert(FedConverter fed, byte[] data) {
        Output out = new Output(data.length + data.length / 2L + 64);
        int done = 0;
        while (out.take(fed, fed.run(data, done, data.length - done, out.bytes, out.length, out.room(), true))) {
            done += fed.taken();
        }
        return out.take();
    }
}
