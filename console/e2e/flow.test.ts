import type { Page } from "playwright-core";
import { type Answers, chainAnswers, fakeServer } from "./support/fakeServer";
import { expect, test } from "./support/test";
import { chooseView, shownView, views } from "./support/views";

test("the page opens on the overview, and data flow", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  expect(await shownView(page)).toBe("overview");
  await expect.poll(() => page.locator("[data-test=status]").innerText()).toMatch(/[1-9][\d. ]*[kM]? records\/s/);
  expect(await page.locator("[data-test=unreachable]").count()).toBe(0);
});

test("the digits choose the views, the address keeps them, and back goes back", async ({
  acquisition: _,
  site,
  page,
}) => {
  await page.goto(site.url);
  for (const view of [...views].reverse()) {
    await chooseView(page, view);
  }
  await page.goBack();
  await expect.poll(() => shownView(page)).toBe("spectra");
  await page.reload();
  expect(await shownView(page)).toBe("spectra");
});

test("every view opens without a fault, also by the mouse", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  for (const link of await page.locator("nav a").all()) {
    await link.click();
    await expect.poll(() => link.getAttribute("aria-current")).toBe("page");
    await expect.poll(() => page.locator("main > *").count()).toBeGreaterThan(0);
    expect(await page.locator("[data-test=fault]").allInnerTexts()).toEqual([]);
  }
});

const someChain = chainAnswers(
  [
    { type: "source", name: "source0", shape: { board: "BOARD0", endpoint: "energy", data_type: "energy" } },
    { type: "spectrum", name: "spectrum0", from: "source0", shape: { channels: 4, bins: 16, gain: 1 } },
    { type: "tof_histogram", name: "times0", from: "source0", shape: { channels: 4, bins: 16 } },
    { type: "position", name: "position0", from: "source0", shape: { rows: 4, columns: 4 } },
    { type: "image", name: "image0", from: "source0", shape: { rows: 4, columns: 4 } },
    { type: "oscilloscope", name: "scope0", from: "source0", shape: { channels: 2, analog: 1, samples: 8 } },
    { type: "rate_counters_sink", name: "rates0", from: "source0", shape: { channels: ["A", "T0"] } },
    { type: "hv", name: "hv0", shape: { board: "BOARD0" } },
  ],
  () => 1_000,
);

test("a view that can't be loaded is said to be missing, and the others go on", async ({ site, page, mayLog }) => {
  mayLog.push(/Failed to load resource/);
  await fakeServer(page, someChain);
  await page.route(/ChainView.*\.js/, (route) => route.abort());
  await page.goto(`${site.url}#/chain`);
  await expect.poll(() => page.locator("[data-test=view-missing]").count()).toBe(1);
  await chooseView(page, "rates");
  await page.unroute(/ChainView.*\.js/);
  await page.reload();
  await chooseView(page, "chain");
  await expect.poll(() => page.locator("[data-test=node]").count()).toBe(9);
});

/** What the page asked and wasn't answered, by its subject: a route and the whole question. */
class HeldAnswers {
  isHolding = false;
  asked = 0;
  mostAtOnce = 0;
  private readonly open = new Map<string, number>();

  constructor(private readonly answers: Answers) {}

  async takeOver(page: Page): Promise<void> {
    await page.routeWebSocket(/\/socket\//, (socket) => {
      const route = decodeURIComponent(new URL(socket.url()).pathname.replace(/^.*\/socket\//, ""));
      socket.onMessage((message) => {
        const subject = `${route} ${String(message)}`;
        const count = (this.open.get(subject) ?? 0) + 1;
        ++this.asked;
        this.mostAtOnce = Math.max(this.mostAtOnce, count);
        const answer = this.isHolding ? undefined : this.answers(JSON.parse(String(message)) as object, route);
        if (typeof answer === "string" && answer !== "") {
          socket.send(answer);
        } else {
          this.open.set(subject, count);
        }
      });
    });
  }

  get subjects(): string[] {
    return [...this.open.keys()];
  }
}

for (const view of views) {
  test(`the view ${view} asks nothing twice before it is answered`, async ({ site, page }) => {
    const held = new HeldAnswers(someChain);
    await held.takeOver(page);
    await page.clock.install();
    await page.goto(`${site.url}#/${view}`);
    // What the view itself asks isn't answered from the beginning, what all views share from now on.
    await expect.poll(() => page.locator("[data-test=status]").innerText()).toContain("records/s");
    await expect.poll(() => held.subjects.length > 0 || view === "chain").toBe(true);
    held.isHolding = true;
    await expect
      .poll(async () => {
        await page.clock.runFor(1_000);
        return held.subjects.filter((subject) => subject.startsWith("commands")).length;
      })
      .toBe(3);
    const asked = held.asked;
    await page.clock.runFor(5_000); // many intervals, and less than the page's patience
    expect(held.mostAtOnce).toBe(1);
    expect(held.asked).toBe(asked);
  });
}

/** How often the account was asked for in so many seconds of the page's time. */
async function accountsIn(page: Page, seconds: number, accounts: () => number): Promise<number> {
  const before = accounts();
  for (let i = 0; i < seconds; ++i) {
    await page.clock.runFor(1_000);
    await page.evaluate(() => undefined);
  }
  return accounts() - before;
}

test("a page that nobody looks at asks seldom, and at once when somebody does", async ({ site, page }) => {
  let accounts = 0;
  const counting: Answers = (query, route) => {
    accounts += query.cmd === "get_ledger" ? 1 : 0;
    return someChain(query, route);
  };
  await new HeldAnswers(counting).takeOver(page);
  await page.addInitScript(() => {
    Object.defineProperty(document, "hidden", { get: () => document.documentElement.dataset["hidden"] === "yes" });
  });
  await page.clock.install();
  await page.goto(site.url);
  const look = (isHidden: string): Promise<void> =>
    page.evaluate((isHidden) => {
      document.documentElement.dataset["hidden"] = isHidden;
      document.dispatchEvent(new Event("visibilitychange"));
    }, isHidden);
  await expect.poll(() => page.locator("[data-test=status]").innerText()).toContain("records/s");
  await expect.poll(async () => (await accountsIn(page, 10, () => accounts)) > 5).toBe(true);
  await look("yes");
  const unseen = await accountsIn(page, 60, () => accounts);
  expect(unseen).toBeGreaterThan(0);
  expect(unseen).toBeLessThanOrEqual(7);
  const before = accounts;
  await look("no");
  await expect.poll(() => accounts).toBe(before + 1); // time stands still meanwhile
});
