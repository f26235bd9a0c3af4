#include "browser/Layout.hpp"

#include <fmt/format.h>

#include <algorithm>

namespace tovi::browser {

namespace {

// For each match: its name, its border box, and the union of its own and its shown descendants'
// boxes (hidden ones measure 0 x 0 and are left out). Page coordinates.
constexpr const char* measure = R"(
[...document.querySelectorAll(%SELECTOR%)].map(e => {
  const r = e.getBoundingClientRect();
  let [l, t, rt, b] = [r.left, r.top, r.right, r.bottom];
  for (const d of e.querySelectorAll('*')) {
    const q = d.getBoundingClientRect();
    if (q.width === 0 && q.height === 0) continue;
    [l, t, rt, b] = [Math.min(l, q.left), Math.min(t, q.top), Math.max(rt, q.right), Math.max(b, q.bottom)];
  }
  return [e.getAttribute(%NAME%) ?? '', r.left + scrollX, r.top + scrollY, r.width, r.height,
          l + scrollX, t + scrollY, rt - l, b - t];
}))";

std::string describe(const Area& a) {
    return fmt::format("({}, {}) sized {} x {}", a.x, a.y, a.width, a.height);
}

std::string replaced(std::string text, const std::string& marker, const std::string& value) {
    return text.replace(text.find(marker), marker.size(), value);
}

}  // namespace

std::vector<Box> boxesOf(Browser& browser, const std::string& selector, const std::string& nameAttribute) {
    const std::string script = replaced(replaced(measure, "%SELECTOR%", nlohmann::json(selector).dump()), "%NAME%",
                                        nlohmann::json(nameAttribute).dump());
    std::vector<Box> boxes;
    for (const nlohmann::json& b : browser.evaluate(script)) {
        auto n = [&](int i) { return b.at(i).get<double>(); };
        boxes.push_back({b.at(0).get<std::string>(), {n(1), n(2), n(3), n(4)}, {n(5), n(6), n(7), n(8)}});
    }
    return boxes;
}

std::vector<std::string> layoutFaults(const std::vector<Box>& boxes) {
    // Sub-pixel rounding of borders and text.
    constexpr double slack = 1;
    std::vector<std::string> faults;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const Area& a = boxes[i].border;
        const Area& c = boxes[i].content;
        const std::string name = boxes[i].name + " at " + describe(a);
        if (a.width <= 0 || a.height <= 0) faults.push_back(name + " has no area");
        if (c.x < a.x - slack || c.y < a.y - slack || c.x + c.width > a.x + a.width + slack ||
            c.y + c.height > a.y + a.height + slack) {
            faults.push_back(name + " is smaller than its content at " + describe(c));
        }
        for (std::size_t j = i + 1; j < boxes.size(); ++j) {
            const Area& b = boxes[j].border;
            const double w = std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x);
            const double h = std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y);
            if (w > 0 && h > 0) faults.push_back(name + " overlaps " + boxes[j].name + " at " + describe(b));
        }
    }
    return faults;
}

}  // namespace tovi::browser
