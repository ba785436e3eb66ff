package kestro.jkc;

import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.CharsetDecoder;
import java.nio.charset.CoderResult;

/** The decoder of a {@link JkcCharset}. */
final class JkcDecoder extends CharsetDecoder {
    private Codec codec;

    JkcDecoder(JkcCharset charset) {
        super(charset, 0.5f, 1);
    }

    @Override
    protected CoderResult decodeLoop(ByteBuffer in, CharBuffer out) {
        if (codec == null) {
            codec = ((JkcCharset) charset()).takeCodec(false);
        }
        return CodecBuffers.run(codec, in, out);
    }

    /** The codec keeps nothing back. */
    @Override
    protected CoderResult implFlush(CharBuffer out) {
        implReset();
        return CoderResult.UNDERFLOW;
    }

    @Override
    protected void implReset() {
        Codec idle = codec;
        if (idle != null) {
            codec = null;
            ((JkcCharset) charset()).giveBack(idle, false);
        }
    }
}
