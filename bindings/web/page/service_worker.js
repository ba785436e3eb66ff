// Keeps the page for offline use. precache.js, which is made when the page is put together, names its files and their version,
// a digest of their contents: a new version is fetched as a whole, and replaces the old one.
importScripts("precache.js");
const { version, files } = self.precache;
const name = `jkc-${version}`;

self.addEventListener("install", (event) => {
    event.waitUntil(
        caches.open(name).then((cache) => cache.addAll(files.map((file) => new Request(file, { cache: "reload" })))).then(() => self.skipWaiting()),
    );
});

self.addEventListener("activate", (event) => {
    const clean = async () => {
        for (const old of await caches.keys()) {
            if (old.startsWith("jkc-") && old !== name) {
                await caches.delete(old);
            }
        }
        await self.clients.claim();
    };
    event.waitUntil(clean());
});

self.addEventListener("fetch", (event) => {
    const answer = async () => (await (await caches.open(name)).match(event.request, { ignoreSearch: true })) ?? fetch(event.request);
    event.respondWith(answer());
});
