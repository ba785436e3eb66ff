package kestro.jkc;

import java.io.ByteArrayOutputStream;
import java.util.ArrayList;
import java.util.List;

/** A writer that keeps the output. At its n-th call it can answer or throw something. */
final class Collector implements Jkc.Writer {
    final ByteArrayOutputStream output = new ByteArrayOutputStream();
    final List<Integer> lengths = new ArrayList<>();
    Object user;
    int call;
    int answer;
    RuntimeException exception;

    static Collector at(int call, int answer, RuntimeException exception) {
        Collector collector = new Collector();
        collector.call = call;
        collector.answer = answer;
        collector.exception = exception;
        return collector;
    }

    @Override
    public int write(byte[] data, int length, Object user) {
        this.user = user;
        output.write(data, 0, length);
        lengths.add(length);
        if (lengths.size() == call && exception != null) {
            throw exception;
        }
        return lengths.size() == call ? answer : 0;
    }
}
