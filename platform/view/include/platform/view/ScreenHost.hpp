#pragma once
// ScreenHost: keeps one screen alive. It owns a root body, builds the tree on the main queue,
// keeps view state between builds (see Scope.hpp), and lets the outside world act on the tree
// the user sees: the demo server, the scenario runner and tests all drive screens through it.
//
//     platform::view::ScreenHost host([client](Scope& s) { return ManagedScreen{client}.body(s); });
//     host.tree();                                   // built on first use
//     host.tap(HostTarget::text("Add Funds"));       // the handler sets state ...
//     platform::mainQueue() runs ...                 // ... and one rebuild follows
//     host.type(HostTarget::id("cardNumber"), "4242");
//
// Rebuilds. A change of state or of an observed object invalidates the screen; the host then
// rebuilds once on a later turn of the main queue, however many changes came in between.
// Events always go to the tree last built, the one the user saw, even while a rebuild is
// pending. After a build, nodes that were not in the previous tree run their appear handlers
// and nodes that left run their disappear handlers (identity: position among shown children,
// or the node's explicit `id`).
//
// Images. Asynchronous images load through an HTTP session, once per URL for the host's life;
// the tree is rebuilt when one arrives. An image that fails, or a URL that does not parse,
// keeps its placeholder.
//
// Targets. A node is named by its accessibility id, by its exact visible text, or by its path:
// the indices of shown, non-empty children from the root ("" is the root, "0/2/1" the second
// child of the third child of the first). Every action answers a result; a target that matches
// nothing, a disabled node or a node of the wrong kind is an error value, never a stop.
//
// Thread safety: construct, drive and destroy on the main queue's thread. Bodies, handlers
// and the rebuild callback run there too.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Executor.hpp"
#include "platform/HttpSession.hpp"
#include "platform/Result.hpp"
#include "platform/view/Inspect.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/Scope.hpp"
#include "platform/view/TextField.hpp"

namespace platform::view {

struct HostTarget {
    enum class By : std::uint8_t { id, text, path };
    By by = By::path;
    std::string value{};

    [[nodiscard]] static HostTarget id(std::string id) { return {By::id, std::move(id)}; }
    [[nodiscard]] static HostTarget text(std::string text) { return {By::text, std::move(text)}; }
    [[nodiscard]] static HostTarget path(std::string path) { return {By::path, std::move(path)}; }
    // "id #save", "text \"Retry\"", "path 0/2".
    [[nodiscard]] std::string describe() const;
};

enum class HostErrorCode : std::uint8_t {
    notFound,     // nothing matches the target
    disabled,     // the node or one above it is disabled
    notHandled,   // the node has no handler for the action (a tap on plain text, say)
    wrongKind,    // typing into something that is no text field, toggling a button, ...
    nothingShown  // no sheet or pushed screen to dismiss
};

struct HostError {
    HostErrorCode code = HostErrorCode::notFound;
    std::string message;
    friend bool operator==(const HostError&, const HostError&) = default;
};

using HostResult = Result<void, HostError>;

struct HostOptions {
    // Where rebuilds are posted; the process-wide main queue when null.
    std::shared_ptr<Executor> mainQueue{};
    // Loads asynchronous images; the shared session when null. Must outlive the host.
    HttpSession* images = nullptr;
    // False: images stay in their loading phase (one-off renders).
    bool loadImages = true;
};

class ScreenHost {
public:
    explicit ScreenHost(Body root, HostOptions options = {});
    ~ScreenHost();
    ScreenHost(const ScreenHost&) = delete;
    ScreenHost& operator=(const ScreenHost&) = delete;

    // The tree last built; the first call builds it.
    [[nodiscard]] const Node& tree();
    // How many builds have run.
    [[nodiscard]] std::uint64_t generation() const;
    [[nodiscard]] bool rebuildPending() const;
    // Builds now when a rebuild is pending (the posted one then finds nothing to do).
    void flush();
    // Asks for a rebuild on a later turn, for a change the screen's state does not show (a new
    // theme, say).
    void invalidate();
    // Runs after every build with the new tree, on the host's thread.
    void setOnRebuild(std::function<void(const Node&)> callback);

    // The node a target names in the tree last built.
    [[nodiscard]] Result<ViewRef, HostError> find(const HostTarget& target);

    // ---- Acting on the tree last built
    HostResult tap(const HostTarget& target);
    HostResult toggle(const HostTarget& target);
    // Text fields: each key through the platform text field, as a person types.
    HostResult type(const HostTarget& target, std::string_view text);
    HostResult paste(const HostTarget& target, std::string_view text);
    HostResult deleteBackward(const HostTarget& target, std::size_t times = 1);
    HostResult selectRange(const HostTarget& target, TextRange range);
    // Ends editing of the focused field, as a tap elsewhere does.
    HostResult leave(const HostTarget& target);
    // Pull to refresh on a scroll view: the indicator shows until the action calls done.
    HostResult refresh(const HostTarget& target);
    [[nodiscard]] bool isRefreshing() const;
    // Dismisses the top-most presented sheet by a drag, running its dismiss handler.
    HostResult dismissSheet();
    // Goes back from the top-most pushed screen, running its dismiss handler.
    HostResult back();

private:
    std::shared_ptr<internal::HostCore> core_;
};

// Builds `body` once with fresh state, for previews and one-off renders.
[[nodiscard]] Node buildOnce(const Body& body);

}  // namespace platform::view
