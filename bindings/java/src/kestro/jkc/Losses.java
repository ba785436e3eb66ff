package kestro.jkc;

import java.util.ArrayList;
import java.util.List;

/**
 * The losses of a conversion.
 *
 * @param count how many there were
 * @param first the first one, without its line and column, or null
 * @param last the last one, likewise
 * @param kept the first ones
 */
record Losses(long count, Loss first, Loss last, List<Loss> kept) {
    static final Losses NONE = new Losses(0, null, null, List.of());

    /** The same of a text whose code units the library has seen in the order of the machine: big-endian, as they are told. */
    Losses ofText() {
        if (FedConverter.CHARS == CodeType.UTF16BE || count == 0) {
            return this;
        }
        return new Losses(count, first.ofText(), last.ofText(), kept.stream().map(Loss::ofText).toList());
    }

    /** Reads what the library tells. */
    static Losses read(long[] told) {
        int front = 1 + 2 * Loss.NUMBERS;
        List<Loss> kept = new ArrayList<>();
        for (int at = front; at < told.length; at += Loss.NUMBERS_WITH_PLACE) {
            kept.add(Loss.read(told, at, true));
        }
        return told[0] == 0 ? NONE
                            : new Losses(told[0], Loss.read(told, 1, false), Loss.read(told, 1 + Loss.NUMBERS, false),
                                    List.copyOf(kept));
    }
}
