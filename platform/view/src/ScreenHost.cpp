#include "platform/view/ScreenHost.hpp"

#include <optional>
#include <utility>
#include <vector>

#include "HostCore.hpp"
#include "platform/view/TextFieldDriver.hpp"

namespace platform::view {

namespace {

std::unexpected<HostError> fail(HostErrorCode code, std::string message) {
    return std::unexpected(HostError{code, std::move(message)});
}

// The top-most presentation of `type` in drawing order (a sheet over a sheet is later).
std::optional<Presentation> topMost(const Node& root, Presentation::Type type) {
    std::optional<Presentation> found;
    std::function<void(const Node&)> visit = [&](const Node& node) {
        for (const Presentation& p : node->presentations) {
            if (p.isPresented && p.type == type) found = p;
        }
        forEachShownChild(node, [&](const Node& child) {
            if (!child.isEmpty()) visit(child);
        });
    };
    visit(root);
    return found;
}

HostResult dismissTopMost(const Node& root, Presentation::Type type, const char* what) {
    auto presentation = topMost(root, type);
    if (!presentation) return fail(HostErrorCode::nothingShown, std::string("no ") + what + " is shown");
    if (!presentation->onDismiss)
        return fail(HostErrorCode::notHandled, std::string("the ") + what + " cannot be dismissed");
    presentation->onDismiss();
    return {};
}

}  // namespace

std::string HostTarget::describe() const {
    switch (by) {
        case By::id:
            return "id #" + value;
        case By::text:
            return "text \"" + value + "\"";
        case By::path:
            return "path " + (value.empty() ? std::string("(root)") : value);
    }
    return value;
}

ScreenHost::ScreenHost(Body root, HostOptions options)
    : core_(std::make_shared<internal::HostCore>(std::move(root), std::move(options))) {}

ScreenHost::~ScreenHost() = default;

const Node& ScreenHost::tree() {
    return core_->tree();
}

std::uint64_t ScreenHost::generation() const {
    return core_->generation;
}

bool ScreenHost::rebuildPending() const {
    return core_->pending;
}

void ScreenHost::flush() {
    if (core_->pending || core_->generation == 0) core_->build();
}

void ScreenHost::invalidate() {
    core_->invalidate();
}

void ScreenHost::setOnRebuild(std::function<void(const Node&)> callback) {
    core_->onRebuild = std::move(callback);
}

Result<ViewRef, HostError> ScreenHost::find(const HostTarget& target) {
    const ViewRef root = inspect(core_->tree());
    std::optional<ViewRef> found;
    switch (target.by) {
        case HostTarget::By::id:
            found = root.tryFind(by::id(target.value));
            break;
        case HostTarget::By::text:
            found = root.tryFind(by::text(target.value));
            break;
        case HostTarget::By::path:
            found = root.at(target.value);
            break;
    }
    if (!found) return fail(HostErrorCode::notFound, "no node matches " + target.describe());
    return std::move(*found);
}

HostResult ScreenHost::tap(const HostTarget& target) {
    auto ref = find(target);
    if (!ref) return std::unexpected(ref.error());
    if (ref->isDisabled()) return fail(HostErrorCode::disabled, target.describe() + " is disabled");
    if (!ref->tap()) return fail(HostErrorCode::notHandled, "nothing at " + target.describe() + " handles a tap");
    return {};
}

HostResult ScreenHost::toggle(const HostTarget& target) {
    auto ref = find(target);
    if (!ref) return std::unexpected(ref.error());
    if (ref->kind() != Kind::toggle) return fail(HostErrorCode::wrongKind, target.describe() + " is no toggle");
    if (ref->isDisabled()) return fail(HostErrorCode::disabled, target.describe() + " is disabled");
    if (!ref->toggle()) return fail(HostErrorCode::notHandled, target.describe() + " has no toggle handler");
    return {};
}

namespace {

// Runs `act` with a driver on the text field `target` names.
template <class Act>
HostResult onField(ScreenHost& host, const HostTarget& target, Act&& act) {
    auto ref = host.find(target);
    if (!ref) return std::unexpected(ref.error());
    const auto* props = ref->node()->as<TextFieldProps>();
    if (props == nullptr || !props->field)
        return fail(HostErrorCode::wrongKind, target.describe() + " is no text field");
    if (ref->isDisabled()) return fail(HostErrorCode::disabled, target.describe() + " is disabled");
    const std::shared_ptr<TextField> field = props->field;  // kept alive while the handlers run
    TextFieldDriver driver(*field);
    return act(*field, driver);
}

HostResult typing(ScreenHost& host, const HostTarget& target, const std::function<void(TextFieldDriver&)>& keys) {
    return onField(host, target, [&](TextField& field, TextFieldDriver& driver) -> HostResult {
        if (!field.isFirstResponder() && !driver.tap()) {
            return fail(HostErrorCode::notHandled, target.describe() + " did not take focus");
        }
        keys(driver);
        return {};
    });
}

}  // namespace

HostResult ScreenHost::type(const HostTarget& target, std::string_view text) {
    return typing(*this, target, [text](TextFieldDriver& driver) { driver.type(text); });
}

HostResult ScreenHost::paste(const HostTarget& target, std::string_view text) {
    return typing(*this, target, [text](TextFieldDriver& driver) { driver.paste(text); });
}

HostResult ScreenHost::deleteBackward(const HostTarget& target, std::size_t times) {
    return typing(*this, target, [times](TextFieldDriver& driver) { driver.deleteBackward(times); });
}

HostResult ScreenHost::selectRange(const HostTarget& target, TextRange range) {
    return typing(*this, target, [range](TextFieldDriver& driver) { driver.select(range); });
}

HostResult ScreenHost::leave(const HostTarget& target) {
    return onField(*this, target, [&](TextField&, TextFieldDriver& driver) -> HostResult {
        if (!driver.leave()) return fail(HostErrorCode::notHandled, target.describe() + " kept the focus");
        return {};
    });
}

HostResult ScreenHost::refresh(const HostTarget& target) {
    auto ref = find(target);
    if (!ref) return std::unexpected(ref.error());
    if (!ref->node()->on.refresh) return fail(HostErrorCode::notHandled, target.describe() + " does not refresh");
    ++core_->refreshing;
    auto ended = std::make_shared<bool>(false);
    ref->refresh([weak = std::weak_ptr<internal::HostCore>(core_), ended] {
        if (*ended) return;
        *ended = true;
        if (auto core = weak.lock()) {
            --core->refreshing;
            core->invalidate();
        }
    });
    return {};
}

bool ScreenHost::isRefreshing() const {
    return core_->refreshing > 0;
}

HostResult ScreenHost::dismissSheet() {
    return dismissTopMost(core_->tree(), Presentation::Type::sheet, "sheet");
}

HostResult ScreenHost::back() {
    return dismissTopMost(core_->tree(), Presentation::Type::push, "pushed screen");
}

Node buildOnce(const Body& body) {
    ScreenHost host(body, HostOptions{.loadImages = false});
    return host.tree();
}

}  // namespace platform::view
