#pragma once
// The state behind a ScreenHost, shared with the scopes it builds and the callbacks it hands
// out (state cells, observations, image loads), which hold it weakly.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <typeindex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Cancellable.hpp"
#include "platform/HttpSession.hpp"
#include "platform/view/Kinds.hpp"
#include "platform/view/Modifiers.hpp"
#include "platform/view/ScreenHost.hpp"

#include "ImagePhases.hpp"

namespace platform::view::internal {

// What the host keeps for one view identity.
struct ScopeRecord {
    std::string id;
    std::map<std::string, std::shared_ptr<CellBase>, std::less<>> cells;
    std::map<std::string, std::pair<std::type_index, std::shared_ptr<void>>, std::less<>> objects;
    // Subscriptions of the latest build of this view; renewed by each build.
    std::vector<AnyCancellable> observations;
    // State changed inside an animation block since this view was last built.
    std::vector<AnimationTag> animated;
    std::uint64_t lastBuild = 0;
};

// The animation of the `withAnimation` block running on this thread, or null.
[[nodiscard]] const Animation* currentAnimation();

class HostCore final : public ImagePhases, public std::enable_shared_from_this<HostCore> {
public:
    HostCore(Body root, HostOptions options);
    ~HostCore() override;

    const Node& tree();
    void build();
    void invalidate();

    // For scopes: builds `body` at `id`. Two children that ask for the same id in one build
    // (a list whose records repeat an id) get distinct ones, so they never share state.
    Node buildScope(std::string id, const Body& body);
    void cellChanged(const std::string& recordId, const std::string& name);
    void observe(ScopeRecord& record, const ObservableObject& object);
    // The record's pending animation tags, moved onto `node`.
    static Node tagAnimations(ScopeRecord& record, Node node);

    LoadPhase phaseFor(const std::string& url) override;

    Body root;
    std::shared_ptr<Executor> queue;
    HttpSession* session;
    const bool loadsImages;
    std::thread::id thread = std::this_thread::get_id();
    std::function<void(const Node&)> onRebuild;
    std::uint64_t generation = 0;
    bool pending = false;
    int refreshing = 0;
    Node current;

private:
    struct Image {
        LoadPhase phase = LoadPhase::loading;
        std::shared_ptr<DataTask> task;
    };

    void dropStaleRecords();
    void runAppearances();
    void loadImages();
    void imageArrived(const std::string& url, bool ok);

    bool building_ = false;
    std::unordered_map<std::string, std::unique_ptr<ScopeRecord>> records_;
    // Nodes with appear or disappear handlers in the current tree, by their identity key.
    std::map<std::string, Node> handlerNodes_;
    std::unordered_map<std::string, Image> images_;
    std::vector<std::string> wantedImages_;
};

}  // namespace platform::view::internal
