#include "platform/view/Scope.hpp"

#include <string>

#include "HostCore.hpp"
#include "platform/Fatal.hpp"

namespace platform::view {

namespace {

thread_local const Animation* activeAnimation = nullptr;

}  // namespace

namespace internal {

const Animation* currentAnimation() {
    return activeAnimation;
}

}  // namespace internal

void withAnimation(const Animation& animation, const std::function<void()>& changes) {
    struct Restore {
        const Animation* previous;
        ~Restore() { activeAnimation = previous; }
    } restore{activeAnimation};
    activeAnimation = &animation;
    changes();
}

Scope::Scope(internal::HostCore& host, internal::ScopeRecord& record) : host_(host), record_(record) {
    record_.observations.clear();
}

const std::string& Scope::identity() const {
    return record_.id;
}

std::shared_ptr<internal::CellBase>& Scope::cellSlot(const std::string& name) {
    return record_.cells[name];
}

std::shared_ptr<internal::CellBase> Scope::attach(std::shared_ptr<internal::CellBase> cell, const std::string& name) {
    cell->name = name;
    cell->changed = [host = host_.weak_from_this(), id = record_.id](const std::string& changed) {
        if (auto core = host.lock()) core->cellChanged(id, changed);
    };
    return cell;
}

std::shared_ptr<void>& Scope::objectSlot(const std::string& name, std::type_index type) {
    auto [it, inserted] = record_.objects.try_emplace(name, type, nullptr);
    if (!inserted && it->second.first != type) typeMismatch("state object", name);
    return it->second.second;
}

void Scope::typeMismatch(const char* what, const std::string& name) const {
    fatalStop("Scope: " + std::string(what) + " '" + name + "' of " + record_.id +
              " was declared with another type before");
}

void Scope::observe(const ObservableObject& object) {
    if (!observed_.insert(&object).second) return;
    host_.observe(record_, object);
}

Node Scope::child(std::string_view type, const Body& body) {
    auto [it, inserted] = childCounts_.try_emplace(std::string(type), 0);
    const int position = it->second++;
    return host_.buildScope(record_.id + "/" + std::string(type) + "#" + std::to_string(position), body);
}

Node Scope::child(std::string_view type, const std::string& key, const Body& body) {
    return host_.buildScope(record_.id + "/" + std::string(type) + "[" + key + "]", body);
}

}  // namespace platform::view
