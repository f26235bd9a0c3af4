#include "DemoPage.hpp"

#include "sandbox/SandboxToviClient.hpp"
#include "sandbox/SandboxVaultServer.hpp"

namespace tovi::demo {

namespace {

std::string escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&#39;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

// The stage is a phone-sized frame; a transform makes it the frame of the screen's sheets,
// which the renderer fixes to the viewport.
constexpr const char* kStyle = R"CSS(
body{background:#E7ECF1}
.demo{display:flex;gap:24px;align-items:flex-start;padding:24px;font:14px/1.4 system-ui,"Liberation Sans",sans-serif;color:#1F2933}
.stage{position:relative;transform:translateZ(0);width:390px;height:844px;overflow:auto;border-radius:28px;background:#fff;box-shadow:0 10px 36px rgba(15,23,42,.22);flex:none}
.panel{width:340px;display:flex;flex-direction:column;gap:12px;flex:none}
.panel section{background:#fff;border-radius:12px;padding:12px 14px;box-shadow:0 1px 3px rgba(15,23,42,.12);display:flex;flex-direction:column;gap:8px}
.panel h1{font-size:16px}.panel h2{font-size:13px;text-transform:uppercase;letter-spacing:.04em;color:#52606D}
.panel .row{display:flex;gap:6px;align-items:center;flex-wrap:wrap}
.panel select,.panel input,.panel button{font:inherit;padding:4px 8px;border:1px solid #CBD2D9;border-radius:6px;background:#fff}
.panel button{cursor:pointer;background:#F5F7FA}.panel input[type=text]{flex:1;min-width:80px}
.panel .status{min-height:1.4em;color:#B42318}.panel .status.ok{color:#1E7E34}
.panel ol{max-height:220px;overflow:auto;font:12px/1.4 ui-monospace,"DejaVu Sans Mono",monospace;padding-left:20px;margin:0}
.panel a{color:#2563EB}
)CSS";

// Forwards what a person does on the stage to the server, one request at a time and in order,
// and swaps the screen it answers with in place, putting focus and caret back where the server
// says they are. Updates that happen on their own (an answer arriving after a latency, an image
// that loaded) come over the event stream.
constexpr const char* kScript = R"JS(
const stage = () => document.querySelector('.stage > .root');
const statusLine = (text, ok) => { const s = document.getElementById('status'); s.textContent = text || ''; s.className = ok ? 'status ok' : 'status'; };
// The server says where focus and caret are; while requests are still on their way the page
// is ahead of it, and a field the person has just entered keeps the focus.
function swap(state, fromStream) {
  if (!state || typeof state.html !== 'string') return;
  if (state.version < TOVI.version || (fromStream && state.version === TOVI.version)) return;
  TOVI.version = state.version;
  const active = document.activeElement && document.activeElement.closest('.stage') ? named(document.activeElement) : null;
  const localCaret = active ? caretOf(document.activeElement) : null;
  const t = document.createElement('template');
  t.innerHTML = state.html;
  stage().replaceWith(t.content.firstElementChild);
  const inputOf = path => { const n = document.querySelector(`.stage [data-node="field:${path}"]`); return n && (n.matches('input') ? n : n.querySelector('input')); };
  let field = document.querySelector('.stage input[data-focused]');
  let caret = field ? (field.dataset.caret || '0,0').split(',').map(Number) : null;
  if (pending > 0 && active && active.kind === 'field' && (!field || named(field).path !== active.path) && inputOf(active.path)) {
    field = inputOf(active.path);
    caret = [localCaret.location, localCaret.length];
  }
  if (field) {
    swapping = true;
    field.focus({preventScroll: true});
    field.setSelectionRange(caret[0], caret[0] + caret[1]);
    swapping = false;
  }
}
let queue = Promise.resolve();
let pending = 0;
let swapping = false;  // focus moved by a swap is the server's own, not news for it
function send(path, body) {
  ++pending;
  queue = queue.then(async () => {
    const response = await fetch(`/s/${TOVI.id}/${path}`, {method: 'POST', headers: {'Content-Type': 'application/json'}, body: JSON.stringify(body)});
    const answer = await response.json().catch(() => ({ok: false, error: `HTTP ${response.status}`}));
    --pending;
    swap(answer, false);
    statusLine(answer.ok ? '' : answer.error, answer.ok);
    return answer;
  }).catch(error => { pending = 0; statusLine(String(error)); });
  return queue;
}
const named = el => { const n = el && el.closest('[data-node]'); if (!n) return null; const i = n.dataset.node.indexOf(':'); return {kind: n.dataset.node.slice(0, i), path: n.dataset.node.slice(i + 1), el: n}; };
const act = (action, path, extra) => send('act', Object.assign({action, path}, extra || {}));
const caretOf = input => ({location: input.selectionStart || 0, length: (input.selectionEnd || 0) - (input.selectionStart || 0)});
document.addEventListener('click', event => {
  if (!event.target.closest('.stage')) return;
  if (event.target.closest('.scrim')) { act('dismiss'); return; }
  const node = named(event.target);
  if (!node) return;
  if (node.kind === 'field') return;  // focusin and the caret moves speak for fields
  if (node.kind === 'toggle') { event.preventDefault(); act('toggle', node.path); return; }
  if (node.kind === 'tap') act('tap', node.path);
});
// Entering a field tells the server at once, before any update could move focus elsewhere;
// a click inside a focused field moves its caret.
document.addEventListener('focusin', event => {
  const node = named(event.target);
  if (node && node.kind === 'field' && event.target.closest('.stage') && !swapping) act('select', node.path, caretOf(event.target));
});
document.addEventListener('mouseup', event => {
  const node = named(event.target);
  if (node && node.kind === 'field' && event.target.closest('.stage') && document.activeElement === event.target) {
    setTimeout(() => act('select', node.path, caretOf(event.target)), 0);
  }
});
document.addEventListener('beforeinput', event => {
  const node = named(event.target);
  if (!node || node.kind !== 'field' || !event.target.closest('.stage')) return;
  event.preventDefault();
  const caret = caretOf(event.target);
  if (event.inputType === 'insertText' || event.inputType === 'insertReplacementText') act('type', node.path, {keys: event.data || '', caret});
  else if (event.inputType === 'insertFromPaste') act('paste', node.path, {keys: event.dataTransfer ? event.dataTransfer.getData('text/plain') : '', caret});
  else if (event.inputType.startsWith('delete')) act('delete', node.path, {caret});
});
document.addEventListener('wheel', event => {
  const node = named(event.target);
  if (node && node.kind === 'refresh' && node.el.scrollTop === 0 && event.deltaY < -40) act('refresh', node.path);
}, {passive: true});
function refreshFirst() { const n = named(document.querySelector('.stage [data-node^="refresh:"]')); if (n) act('refresh', n.path); else statusLine('Nothing on this screen refreshes.'); }
function sandbox(setting) { return send('sandbox', setting); }
function applyWallet() {
  const effect = document.getElementById('effect').value;
  const value = document.getElementById('value').value;
  const wallet = {operation: document.getElementById('operation').value, effect};
  if (effect === 'latency') wallet.ms = Number(value || 0); else if (effect !== 'clear') wallet.message = value || 'The sandbox was told to fail.';
  sandbox({wallet});
}
const events = new EventSource(`/s/${TOVI.id}/events`);
events.addEventListener('update', event => swap(JSON.parse(event.data), true));
events.addEventListener('console', event => {
  const list = document.getElementById('console');
  const item = document.createElement('li');
  item.textContent = event.data;
  list.appendChild(item);
  while (list.children.length > 200) list.firstChild.remove();
  list.scrollTop = list.scrollHeight;
});
)JS";

std::string option(std::string_view value, std::string_view label, bool selected) {
    return "<option value=\"" + escaped(value) + "\"" + (selected ? " selected" : "") + ">" + escaped(label) +
           "</option>";
}

}  // namespace

PageChrome sessionChrome(const std::string& sessionId, const screens::ScreenEntry& screen, const DemoSettings& settings,
                         std::uint64_t version) {
    PageChrome chrome;
    chrome.head = std::string("<style>") + kStyle + "</style><script>const TOVI={\"id\":\"" + escaped(sessionId) +
                  "\",\"version\":" + std::to_string(version) + "};</script><script defer src=\"/demo.js\"></script>";

    std::string locales;
    for (const std::string_view locale : kDemoLocales) locales += option(locale, locale, settings.locale == locale);
    std::string operations;
    for (std::size_t i = 0; i < sandbox::kSandboxOperationCount; ++i) {
        const auto name = sandbox::operationName(static_cast<sandbox::SandboxOperation>(i));
        operations += option(name, name, false);
    }
    for (std::size_t i = 0; i < sandbox::kSandboxVaultRouteCount; ++i) {
        const std::string name =
            std::string(kVaultRoutePrefix) + sandbox::routeName(static_cast<sandbox::SandboxVaultRoute>(i));
        operations += option(name, name, false);
    }
    chrome.bodyStart = "<div class=\"demo\"><main class=\"stage\" aria-label=\"" + escaped(screen.title) + "\">";
    chrome.bodyEnd =
        "</main><aside class=\"panel\">"
        "<section><h1>" +
        escaped(screen.title) +
        "</h1><div class=\"row\"><a href=\"/\">All screens</a>"
        "<button id=\"reset\" onclick=\"sandbox({reset:true})\">Reset</button>"
        "<button onclick=\"refreshFirst()\">Pull to refresh</button>"
        "<button onclick=\"act('dismiss')\">Dismiss sheet</button>"
        "<button onclick=\"act('back')\">Back</button></div>"
        "<div id=\"status\" class=\"status\" role=\"status\"></div></section>"
        "<section><h2>Sandbox wallet and vault</h2><div class=\"row\"><select id=\"operation\">" +
        operations + "</select><select id=\"effect\">" + option("failNext", "fail next call", true) +
        option("failAlways", "fail every call", false) + option("latency", "latency (ms)", false) +
        option("clear", "clear", false) +
        "</select></div><div class=\"row\"><input id=\"value\" type=\"text\" placeholder=\"message or ms\">"
        "<button id=\"apply\" onclick=\"applyWallet()\">Apply</button></div>"
        "<div>Calls made after this; Reset starts the screen again. The vault is one for every tab."
        "</div></section>"
        "<section><h2>Device</h2><div class=\"row\">Theme <select id=\"theme\" "
        "onchange=\"sandbox({theme:this.value})\">" +
        option("default", "default", !settings.customTheme) + option("custom", "custom brand", settings.customTheme) +
        "</select> Locale <select id=\"locale\" onchange=\"sandbox({locale:this.value})\">" + locales +
        "</select></div><label class=\"row\"><input id=\"demoMode\" type=\"checkbox\" "
        "onchange=\"sandbox({demoMode:this.checked})\"" +
        (settings.demoMode ? " checked" : "") +
        "> Demo mode</label></section>"
        "<section><h2>Console (every tab)</h2><ol id=\"console\"></ol></section></aside></div>";
    return chrome;
}

std::string homePage(std::span<const screens::ScreenEntry> screens) {
    std::string items;
    for (const auto& screen : screens) {
        items += "<li><a href=\"/new?screen=" + escaped(screen.name) + "\">" + escaped(screen.title) + "</a> <code>" +
                 escaped(screen.name) + "</code></li>";
    }
    return std::string("<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>Tovi demo</title><style>") + kStyle +
           "body{padding:32px;font:15px/1.5 system-ui,sans-serif}li{margin:6px 0}code{color:#52606D}</style></head>"
           "<body><h1>Tovi wallet component</h1><p>Every screen runs live on the embedded sandbox wallet and sandbox "
           "vault. Each opens in a session of its own; open several tabs to compare.</p><ul id=\"screens\">" +
           items + "</ul></body></html>";
}

std::string messagePage(std::string_view title, std::string_view message) {
    return "<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>" + escaped(title) +
           "</title></head><body style=\"font:15px system-ui,sans-serif;padding:32px\"><h1>" + escaped(title) +
           "</h1><p>" + escaped(message) + "</p><p><a href=\"/\">All screens</a></p></body></html>";
}

// The script is served on its own, so that pages stay small and the browser caches it.
std::string_view demoScript() {
    return kScript;
}

}  // namespace tovi::demo
