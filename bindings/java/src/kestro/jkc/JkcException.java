package kestro.jkc;

/** A judgement that found no single code type, or a conversion that did not succeed. */
public final class JkcException extends RuntimeException {
    private static final long serialVersionUID = 1;

    /** What the native method answered. */
    private final int status;

    JkcException(int status) {
        super(message(status));
        this.status = status;
    }

    /**
     * Tells what {@link Jkc} answered.
     *
     * @return a negative status, or a set of code types for {@link CodeType#judged}
     */
    public int status() {
        return status;
    }

    private static String message(int status) {
        if (status > 0) {
            return "the text could be any of " + CodeType.judged(status) + "; tell which one to expect";
        }
        switch (status) {
            case Status.EOF:
                return "the text fits no code type";
            case Status.EALLOC:
                return "memory is short";
            case Status.EUEXPEOD:
                return "the text ends inside a character";
            default:
                return "status " + status;
        }
    }
}
