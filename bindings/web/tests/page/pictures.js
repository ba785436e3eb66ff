// usage: pictures.js FOLDER
// Takes the pictures of the page for the documentation.
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { launch, open, serve } from "./browser.js";
import { file } from "./texts.js";

const list = "商店街の名簿\n\n髙橋書店　　　03-1234-5678　①番街\n𠮷野家具　　　03-2345-6789　②番街\n森鷗外記念堂　03-3456-7890　③番街\nCafé 青い鳥　　03-4567-8901　☕は一階\n\n※ 電話は平日の九時～五時にお願いします。\n";
const broken = Buffer.from("昨日は楽しい時間をありがとうございました。").toString("latin1");
const example = (name) => file(name.split("/").pop(), readFileSync(`examples/${name}`));
const files = [
    file("名簿.txt", list),
    example("data/letter.sjis.txt"),
    example("data/notice.euc.txt"),
    example("data/mail.jis.txt"),
    file("short.txt", [0xe4, 0xd8, 0xe5, 0xa5, 0x0a]),
    example("archive/log.txt"),
    example("archive/photo.jpg"),
    file("message.txt", broken),
];

async function take(page, name) {
    const session = await page.context().newCDPSession(page);
    const { data } = await session.send("Page.captureScreenshot", { format: "webp", quality: 88 });
    writeFileSync(join(process.argv[2], name), Buffer.from(data, "base64"));
    if (process.env.PNG) {
        await page.screenshot({ path: join(process.env.PNG, name.replace("webp", "png")) });
    }
}

const { server, url } = await serve("site");
const browser = await launch();
for (const [locale, ending] of [["en-US", "webp"], ["ja-JP", "ja.webp"]]) {
    const select = async (page, name) => {
        await page.locator("#list button", { hasText: name }).click();
        await page.waitForTimeout(500);
    };
    const light = await open(browser, url, { locale, colorScheme: "light", reducedMotion: "reduce", viewport: { width: 1280, height: 1180 } });
    await light.setInputFiles("#files-input", files);
    await light.locator("#list .chip").nth(7).waitFor();
    await light.selectOption("#to", "Shift_JIS");
    await light.locator(".places button").nth(1).click();
    await light.waitForTimeout(500);
    await light.evaluate(() => scrollTo(0, 0));
    await take(light, `page.${ending}`);

    const dark = await open(browser, url, { locale, colorScheme: "dark", reducedMotion: "reduce", viewport: { width: 1280, height: 1000 } });
    await dark.setInputFiles("#files-input", files);
    await dark.locator("#list .chip").nth(7).waitFor();
    await select(dark, "short.txt");
    await take(dark, `page-open.${ending}`);

    const phone = await open(browser, url, { locale, colorScheme: "light", reducedMotion: "reduce", viewport: { width: 390, height: 760 } });
    await phone.fill("#mend-text", broken);
    await phone.locator(".proposal").waitFor();
    await phone.locator(".mend").evaluate((card) => card.scrollIntoView());
    await phone.waitForTimeout(300);
    await take(phone, `page-phone.${ending}`);
}
await browser.close();
server.close();
