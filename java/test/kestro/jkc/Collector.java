package kestro.jkc;

import java.io.ByteArrayOutputStream;

/** A writer that keeps the output, and answers or throws something at its n-th call. */
final class Collector implements Jkc.Writer {
    final ByteArrayOutputStream output = new ByteArrayOutputStream();
    int calls;
    Object user;

    private final int wayward;
    private final int answer;
    private final RuntimeException exception;

    private Collector(int wayward, int answer, RuntimeException exception) {
        this.wayward = wayward;
        this.answer = answer;
        this.exception = exception;
    }

    Collector() {
        this(0, 0, null);
    }

    static Collector answering(int call, int answer) {
        return new Collector(call, answer, null);
    }

    static Collector throwing(int call, RuntimeException exception) {
        return new Collector(call, 0, exception);
    }

    @Override
    public int write(byte[] data, int length, Object user) {
        this.user = user;
        output.write(data, 0, length);
        if (++calls == wayward) {
            if (exception != null) {
                throw exception;
            }
            return answer;
        }
        return 0;
    }
}
