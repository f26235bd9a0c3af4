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

std::string describe(const platform::view::Rect& a) {
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
        const platform::view::Rect& a = boxes[i].border;
        const platform::view::Rect& c = boxes[i].content;
        const std::string name = boxes[i].name + " at " + describe(a);
        if (a.width <= 0 || a.height <= 0) faults.push_back(name + " has no area");
        if (c.minX() < a.minX() - slack || c.minY() < a.minY() - slack || c.maxX() > a.maxX() + slack ||
            c.maxY() > a.maxY() + slack) {
            faults.push_back(name + " is smaller than its content at " + describe(c));
        }
        for (std::size_t j = i + 1; j < boxes.size(); ++j) {
            const platform::view::Rect& b = boxes[j].border;
            const double w = std::min(a.maxX(), b.maxX()) - std::max(a.minX(), b.minX());
            const double h = std::min(a.maxY(), b.maxY()) - std::max(a.minY(), b.minY());
            if (w > 0 && h > 0) faults.push_back(name + " overlaps " + boxes[j].name + " at " + describe(b));
        }
    }
    return faults;
}

}  // namespace tovi::browser
