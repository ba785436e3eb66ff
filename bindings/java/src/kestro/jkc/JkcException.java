package kestro.jkc;

/** A judgement that found no single code type, or a conversion that did not succeed. */
public final class JkcException extends RuntimeException {
    private static final long serialVersionUID = 1;

    /** What the native method answered. */
    private final int status;

    private final transient Loss loss;

    JkcException(int status) {
        this(status, null);
    }

    JkcException(int status, Loss loss) {
        super(message(status, loss));
        this.status = status;
        this.loss = status == Status.ELOSS ? loss : null;
    }

    /**
     * Tells what {@link Jkc} answered.
     *
     * @return a negative status, or a set of code types for {@link CodeType#judged}
     */
    public int status() {
        return status;
    }

    /**
     * Tells where a conversion stopped that was to stop at a loss.
     *
     * @return the loss, without its line and column; null after any other failure
     */
    public Loss loss() {
        return loss;
    }

    private static String message(int status, Loss loss) {
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
            case Status.ELOSS:
                return "a loss at byte " + loss.offset() + ": " + loss;
            default:
                return "status " + status;
        }
    }
}
