import jkc = require("jkc");

const made: Promise<jkc.Jkc> = jkc.load();
made.then(({ version }) => version.split("."));
