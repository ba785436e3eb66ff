// The whole text of a file, mended, as UTF-8.
export async function mendFile(jkc, { file, from }) {
    const text = jkc.decode(new Uint8Array(await file.arrayBuffer()), from);
    const mending = jkc.unmojibake(text);
    return mending && { blob: new Blob([mending.text], { type: "text/plain;charset=utf-8" }), lost: mending.lost };
}
