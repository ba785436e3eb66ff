/** What all functions throw where the library answers a status, or where it cannot be asked. */
export class JkcError extends Error {
    /**
     * @param {string} message
     * @param {number} status a JkcStatus
     */
    constructor(message, status) {
        super(message);
        this.name = "JkcError";
        this.status = status;
    }
}

// The statuses that can come of what is done here, with what they mean.
export const EALLOC = -4;
export const ETYPE = -20;
export const ECHAR = -23;
export const ELOSS = -25;
const messages = new Map([
    [EALLOC, "memory is short"],
    [-8, "writing failed"],
    [ETYPE, "a code type that does not fit here"],
    [-22, "the data ends inside a character"],
    [ECHAR, "a byte that the code type does not allow"],
    [ELOSS, "something would be lost"],
]);

/** Throws where a status is not 0. */
export function check(status) {
    if (status !== 0) {
        throw new JkcError(messages.get(status) ?? `status ${status}`, status);
    }
}
