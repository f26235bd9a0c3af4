#include "HostCore.hpp"

#include <algorithm>
#include <set>

#include "platform/Fatal.hpp"
#include "platform/MainQueue.hpp"
#include "platform/Url.hpp"
#include "platform/view/NodeData.hpp"

namespace platform::view::internal {

namespace {

thread_local ImagePhases* buildingHost = nullptr;

// The identity of a node for appear and disappear: its parent's, then its explicit id or its
// position among the shown children, then what it is.
std::string childKey(const std::string& parent, const Node& child, std::size_t index) {
    std::string key = parent;
    key += '/';
    key += child->identity.empty() ? std::to_string(index) : "#" + child->identity;
    key += ':';
    key += child->viewType.empty() ? kindName(child.kind()) : child->viewType;
    return key;
}

void collectHandlerNodes(const Node& node, const std::string& key, std::vector<std::pair<std::string, Node>>& out) {
    if (node->on.appear || node->on.disappear) out.emplace_back(key, node);
    std::size_t index = 0;
    forEachShownChild(node, [&](const Node& child) {
        if (child.isEmpty()) return;
        collectHandlerNodes(child, childKey(key, child, index++), out);
    });
}

}  // namespace

ImagePhases* currentImagePhases() {
    return buildingHost;
}

HostCore::HostCore(Body body, HostOptions options)
    : root(std::move(body)),
      queue(options.mainQueue ? std::move(options.mainQueue) : sharedMainQueue()),
      session(options.images),
      loadsImages(options.loadImages) {}

HostCore::~HostCore() {
    for (auto& [url, image] : images_) {
        if (image.task) image.task->cancel();
    }
    for (auto& [id, record] : records_) {
        for (auto& [name, cell] : record->cells) cell->changed = nullptr;
    }
}

const Node& HostCore::tree() {
    if (generation == 0) build();
    return current;
}

void HostCore::invalidate() {
    if (pending) return;
    pending = true;
    queue->post([weak = weak_from_this()] {
        if (auto core = weak.lock(); core && core->pending) core->build();
    });
}

void HostCore::build() {
    if (building_) return;
    building_ = true;
    pending = false;
    ++generation;
    wantedImages_.clear();
    ImagePhases* const outer = buildingHost;
    buildingHost = this;
    Node tree;
    {
        struct Restore {
            ImagePhases* outer;
            bool& building;
            ~Restore() {
                buildingHost = outer;
                building = false;
            }
        } restore{outer, building_};
        tree = buildScope("Root", root);
    }
    current = std::move(tree);
    dropStaleRecords();
    runAppearances();
    loadImages();
    if (onRebuild) onRebuild(current);
}

Node HostCore::buildScope(std::string id, const Body& body) {
    auto [it, inserted] = records_.try_emplace(id, nullptr);
    if (!inserted && it->second->lastBuild == generation) {
        // The same identity twice in one build: give the second its own.
        for (int n = 2;; ++n) {
            std::string unique = id + "~" + std::to_string(n);
            auto found = records_.find(unique);
            if (found == records_.end() || found->second->lastBuild != generation) {
                return buildScope(std::move(unique), body);
            }
        }
    }
    if (inserted) {
        it->second = std::make_unique<ScopeRecord>();
        it->second->id = std::move(id);
    }
    ScopeRecord& record = *it->second;
    record.lastBuild = generation;
    Scope scope(*this, record);
    return tagAnimations(record, body(scope));
}

Node HostCore::tagAnimations(ScopeRecord& record, Node node) {
    if (record.animated.empty() || node.isEmpty()) {
        record.animated.clear();
        return node;
    }
    for (AnimationTag& tag : record.animated) node.animation(tag.animation, std::move(tag.value));
    record.animated.clear();
    return node;
}

void HostCore::cellChanged(const std::string& recordId, const std::string& name) {
    if (std::this_thread::get_id() != thread) {
        fatalStop("ScreenHost: state '" + name + "' of " + recordId +
                  " changed on a background thread; change view state on the main queue");
    }
    auto it = records_.find(recordId);
    if (it == records_.end()) return;
    if (const Animation* animation = currentAnimation()) {
        auto& tags = it->second->animated;
        std::erase_if(tags, [&](const AnimationTag& tag) { return tag.value == name; });
        tags.push_back(AnimationTag{*animation, name});
    }
    invalidate();
}

void HostCore::observe(ScopeRecord& record, const ObservableObject& object) {
    object.confineToCurrentThread();
    record.observations.push_back(object.objectWillChange().sink([weak = weak_from_this()](const Signal&) {
        if (auto core = weak.lock()) core->invalidate();
    }));
}

void HostCore::dropStaleRecords() {
    std::vector<std::unique_ptr<ScopeRecord>> dropped;
    for (auto it = records_.begin(); it != records_.end();) {
        if (it->second->lastBuild == generation) {
            ++it;
            continue;
        }
        for (auto& [name, cell] : it->second->cells) cell->changed = nullptr;
        dropped.push_back(std::move(it->second));
        it = records_.erase(it);
    }
    // Destroyed outside the loop: an owned object's destructor may reach back into the host.
    dropped.clear();
}

void HostCore::runAppearances() {
    std::vector<std::pair<std::string, Node>> shown;
    collectHandlerNodes(current, "", shown);
    std::map<std::string, Node> previous = std::exchange(handlerNodes_, {});
    for (const auto& [key, node] : shown) handlerNodes_.emplace(key, node);
    for (const auto& [key, node] : previous) {
        if (!handlerNodes_.contains(key) && node->on.disappear) node->on.disappear();
    }
    for (const auto& [key, node] : shown) {
        if (!previous.contains(key) && node->on.appear) node->on.appear();
    }
}

LoadPhase HostCore::phaseFor(const std::string& url) {
    wantedImages_.push_back(url);
    auto it = images_.find(url);
    return it == images_.end() ? LoadPhase::loading : it->second.phase;
}

void HostCore::loadImages() {
    if (!loadsImages) return;
    for (const std::string& url : wantedImages_) {
        auto [it, inserted] = images_.try_emplace(url);
        if (!inserted) continue;
        const auto parsed = Url::parse(url);
        if (!parsed || (parsed->scheme() != "http" && parsed->scheme() != "https")) {
            it->second.phase = LoadPhase::failed;
            invalidate();
            continue;
        }
        HttpSession& http = session != nullptr ? *session : sharedHttpSession();
        // The completion may run on another thread: it only posts, so that the host is never
        // touched (nor its last reference dropped) off its own thread.
        HttpRequest request;
        request.url = url;
        auto task = http.dataTask(std::move(request), [weak = weak_from_this(), queue = queue, url](HttpResult result) {
            const bool ok = result && result->status >= 200 && result->status < 300 && !result->body.empty();
            queue->post([weak, url, ok] {
                if (auto core = weak.lock()) core->imageArrived(url, ok);
            });
        });
        it->second.task = task;
        task->resume();
    }
}

void HostCore::imageArrived(const std::string& url, bool ok) {
    auto it = images_.find(url);
    if (it == images_.end()) return;
    it->second.phase = ok ? LoadPhase::loaded : LoadPhase::failed;
    it->second.task.reset();
    invalidate();
}

}  // namespace platform::view::internal
