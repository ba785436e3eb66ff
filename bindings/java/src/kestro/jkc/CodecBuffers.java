package kestro.jkc;

import java.nio.Buffer;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.CharBuffer;
import java.nio.charset.CoderResult;

/** Runs a codec from buffer to buffer, of whatever kind they are. */
final class CodecBuffers {
    /** Elements of a buffer that the native side does not reach, which pass through an array. */
    private static final int ARRAY_LENGTH = 4096;

    /** More than any encoder has to write at the end. */
    private static final int LONGEST_END = 8;

    private CodecBuffers() {}

    /** What is left of a buffer, as the native side reaches it. */
    private record View(Object memory, long from, int length, int shift, boolean isDirect) {
        /** That of a buffer of bytes or characters, or null. */
        static View of(Buffer buffer) {
            int shift = buffer instanceof CharBuffer ? 1 : 0;
            if (buffer.hasArray()) {
                long from = (long) buffer.arrayOffset() + buffer.position();
                return new View(buffer.array(), from << shift, buffer.remaining(), shift, false);
            }
            boolean isNative = !(buffer instanceof CharBuffer chars) || chars.order() == ByteOrder.nativeOrder();
            return buffer.isDirect() && isNative && buffer.hasRemaining()
                    ? new View(buffer, (long) buffer.position() << shift, buffer.remaining(), shift, true)
                    : null;
        }

        /** The bytes that are left. */
        long bytes() {
            return (long) length << shift;
        }
    }

    static CoderResult run(Codec codec, Buffer in, Buffer out) {
        for (;;) {
            View from = View.of(in);
            View to = View.of(out);
            if (from == null) {
                from = copyOf(in);
            }
            boolean isOutside = to == null;
            if (isOutside) {
                to = arrayFor(out);
            }
            long result = codec.run(from.memory, from.from, from.bytes(), to.memory, to.from, to.bytes(),
                    (from.isDirect ? NativeObject.INPUT_IS_DIRECT : 0)
                            | (to.isDirect ? NativeObject.OUTPUT_IS_DIRECT : 0));
            int taken = NativeObject.taken(result) >> from.shift;
            int written = NativeObject.written(result) >> to.shift;
            if (isOutside) {
                put(out, to, written);
            } else {
                out.position(out.position() + written);
            }
            in.position(in.position() + taken);
            boolean hasMoved = taken > 0 || written > 0;
            switch (NativeObject.how(result)) {
                case Codec.ILL_FORMED:
                    return CoderResult.malformedForLength(codec.lossLength() >> from.shift);
                case Codec.UNMAPPABLE:
                    return CoderResult.unmappableForLength(codec.lossLength() >> from.shift);
                case Codec.OVERFLOW:
                    if (!hasMoved || !isOutside && written == to.length) {
                        return CoderResult.OVERFLOW;
                    }
                    break;
                default:
                    if (!hasMoved || !in.hasRemaining()) {
                        return CoderResult.UNDERFLOW;
                    }
            }
        }
    }

    /** Closes the output of an encoder. */
    static CoderResult flush(Codec codec, ByteBuffer out) {
        byte[] end = new byte[Math.min(out.remaining(), LONGEST_END)];
        long result = codec.run(new byte[0], 0, 0, end, 0, end.length, NativeObject.IS_LAST);
        out.put(end, 0, NativeObject.written(result));
        return NativeObject.how(result) == Codec.OVERFLOW ? CoderResult.OVERFLOW : CoderResult.UNDERFLOW;
    }

    /** The front of what is left of a buffer. */
    private static View copyOf(Buffer in) {
        int length = Math.min(in.remaining(), ARRAY_LENGTH);
        if (in instanceof CharBuffer chars) {
            char[] copy = new char[length];
            chars.duplicate().get(copy);
            return new View(copy, 0, length, 1, false);
        }
        byte[] copy = new byte[length];
        ((ByteBuffer) in).duplicate().get(copy);
        return new View(copy, 0, length, 0, false);
    }

    private static View arrayFor(Buffer out) {
        int length = Math.min(out.remaining(), ARRAY_LENGTH);
        return out instanceof CharBuffer ? new View(new char[length], 0, length, 1, false)
                                         : new View(new byte[length], 0, length, 0, false);
    }

    private static void put(Buffer out, View view, int length) {
        if (out instanceof CharBuffer chars) {
            chars.put((char[]) view.memory, 0, length);
        } else {
            ((ByteBuffer) out).put((byte[]) view.memory, 0, length);
        }
    }
}
