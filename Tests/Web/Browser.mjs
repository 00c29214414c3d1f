import { spawn } from 'node:child_process';
import { writeFile } from 'node:fs/promises';

const kStartMilliseconds = 30000;
const kPatienceMilliseconds = 60000; // of a busy machine

/** Headless Chromium, driven by WebDriver, and by the DevTools protocol for what that lacks. */
export class Browser {
  #driver;
  #session;

  /** @param {{downloads: string}} options folder for downloads */
  static async start({ downloads, flags = ['--autoplay-policy=no-user-gesture-required'] }) {
    const driver = spawn('chromedriver', ['--port=0'], { stdio: ['ignore', 'pipe', 'inherit'] });
    const browser = new Browser(driver, await portOf(driver));
    try {
      await browser.#open(downloads, flags);
    } catch (error) {
      driver.kill();
      throw error;
    }
    return browser;
  }

  constructor(driver, port) {
    this.#driver = driver;
    this.#session = `http://127.0.0.1:${port}/session`;
  }

  async close() {
    await this.#send('DELETE', '').catch(() => {});
    this.#driver.kill();
  }

  /** Opens an address, after `script` has run in the page that comes, if given. */
  async goTo(url, script = '') {
    const { identifier } = await this.devTools('Page.addScriptToEvaluateOnNewDocument',
      { source: script });
    await this.#send('POST', '/url', { url });
    await this.devTools('Page.removeScriptToEvaluateOnNewDocument', { identifier });
  }

  /** Runs an async function in the page with arguments that JSON can hold, and gives its result. */
  async run(body, ...args) {
    const script = `const done = arguments[arguments.length - 1];
      (${body})(...Array.from(arguments).slice(0, -1))
        .then((value) => done({ value }), (error) => done({ error: String(error.stack ?? error) }));`;
    const { value, error } = await this.#send('POST', '/execute/async', { script, args });
    if (error) {
      throw new Error(`in the page: ${error}`);
    }
    return value;
  }

  /** The result of `body` as soon as it is true. */
  async until(body, ...args) {
    const end = Date.now() + kPatienceMilliseconds;
    for (;;) {
      const result = await this.run(body, ...args);
      if (result || Date.now() > end) {
        if (!result) {
          throw new Error(`never came true: ${body}`);
        }
        return result;
      }
      await new Promise((resolve) => setTimeout(resolve, 50));
    }
  }

  devTools(cmd, params = {}) {
    return this.#send('POST', '/goog/cdp/execute', { cmd, params });
  }

  /** Drops files or folders on the middle of the page. @param {string[]} paths absolute */
  async drop(...paths) {
    const data = { items: [], files: paths, dragOperationsMask: 1 };
    for (const type of ['dragEnter', 'dragOver', 'drop']) {
      await this.devTools('Input.dispatchDragEvent', { type, x: 200, y: 200, data });
    }
  }

  /** Clicks as a person does. */
  async click(selector) {
    const { 'element-6066-11e4-a52e-4f735466cecf': id } = await this.#send('POST', '/element',
      { using: 'css selector', value: selector });
    await this.#send('POST', `/element/${id}/click`, {});
  }

  /** Presses and releases keys in turn; WebDriver has codes for those without a letter. */
  async press(...keys) {
    const actions = keys.flatMap((value) => [{ type: 'keyDown', value }, { type: 'keyUp', value }]);
    await this.#send('POST', '/actions', { actions: [{ type: 'key', id: 'keys', actions }] });
  }

  /** Size in CSS pixels, density and colours of the screen. */
  async setScreen({ width, height, scheme = 'light', density = 1 }) {
    await this.devTools('Emulation.setDeviceMetricsOverride',
      { width, height, deviceScaleFactor: density, mobile: width < 500 });
    await this.devTools('Emulation.setEmulatedMedia',
      { features: [{ name: 'prefers-color-scheme', value: scheme }] });
  }

  async screenshot(path) {
    await writeFile(path, Buffer.from(await this.#send('GET', '/screenshot'), 'base64'));
  }

  /** The accessibility tree as {role, name, ...properties}, without what is ignored. */
  async accessibleNodes() {
    const { nodes } = await this.devTools('Accessibility.getFullAXTree');
    return nodes.filter((node) => !node.ignored).map((node) => ({
      role: node.role?.value,
      name: node.name?.value ?? '',
      value: node.value?.value,
      ...Object.fromEntries((node.properties ?? []).map(({ name, value }) => [name, value.value])),
    }));
  }

  /** What the page complained about since the last call. */
  async complaints() {
    const entries = await this.#send('POST', '/se/log', { type: 'browser' });
    return entries.filter(({ level }) => level === 'SEVERE').map(({ message }) => message);
  }

  async #open(downloads, flags) {
    const args = ['--headless=new', ...flags,
      '--force-color-profile=srgb', '--disable-dev-shm-usage', '--window-size=1400,900'];
    if (process.getuid() === 0) {
      args.push('--no-sandbox'); // Chromium has none for root
    }
    const capabilities = {
      browserName: 'chrome',
      'goog:chromeOptions': { args, prefs: { 'download.default_directory': downloads } },
      'goog:loggingPrefs': { browser: 'ALL' },
      timeouts: { script: 120000 },
    };
    const { sessionId } = await this.#send('POST', '', { capabilities: { alwaysMatch: capabilities } });
    this.#session += `/${sessionId}`;
    await this.devTools('Page.setDownloadBehavior', { behavior: 'allow', downloadPath: downloads });
  }

  async #send(method, path, body) {
    const response = await fetch(this.#session + path, { method, body: body && JSON.stringify(body) });
    const { value } = await response.json();
    if (!response.ok) {
      throw new Error(`${method} ${path}: ${value.message}`);
    }
    return value;
  }
}

function portOf(driver) {
  return new Promise((resolve, reject) => {
    const timer = setTimeout(() => reject(new Error('chromedriver did not start')),
      kStartMilliseconds);
    let text = '';
    driver.on('error', reject);
    driver.stdout.on('data', (data) => {
      text += data;
      const port = /successfully on port (\d+)/.exec(text);
      if (port) {
        clearTimeout(timer);
        resolve(Number(port[1]));
      }
    });
  });
}
