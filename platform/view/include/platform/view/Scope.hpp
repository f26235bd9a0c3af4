#pragma once
// Scope: what a stateful view's body gets from the screen host that builds it.
//
// A stateful view is a function of its inputs and of state the host keeps for it between
// builds. It is written as a body that takes a Scope:
//
//     Node body(Scope& s) const {
//         auto offset = s.state("cardSlideOffset", 0.0);          // view-local state
//         auto model = s.stateObject<SheetViewModel>("viewModel", [&] {  // made once
//             return std::make_shared<SheetViewModel>(amounts);
//         });
//         return VStack({Text(model->title.get()),
//                        s.child("RowView", [&](Scope& row) { return RowView{...}.body(row); })})
//             .onTapGesture([offset] { withAnimation(Animation::easeInOut(0.5), [&] { offset.set(80); }); });
//     }
//
// Identity. Each body runs at an identity: its parent's identity plus the child's type name
// and either the explicit key the caller gives (rows of a list, keyed by their id) or the
// number of children of that type the parent made before it in the same body. Counting per
// type keeps a child's state when a sibling of another type comes and goes; rows that can be
// inserted or reordered must pass a key. State and owned objects live as long as their
// identity is built; a build that no longer reaches an identity drops them.
//
// Observation. `observe(object)` rebuilds the screen whenever the object will change, for as
// long as the view's latest body observed it; `stateObject` observes what it owns when that is
// an ObservableObject. An observed object is confined to the host's thread (a change from
// another thread stops the process with a message naming the property).
//
// Animation. A state change made inside `withAnimation` is recorded on the tree of the next
// build: the changed view's top node carries an animation tag (state name, curve, duration).
//
// Thread safety: bodies run on the host's thread; a Scope is only valid during the body call.

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeindex>
#include <typeinfo>
#include <unordered_set>

#include "platform/ObservableObject.hpp"
#include "platform/Published.hpp"
#include "platform/view/Modifiers.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/State.hpp"

namespace platform::view {

class Scope;
using Body = std::function<Node(Scope&)>;

namespace internal {
class HostCore;
struct ScopeRecord;
}  // namespace internal

class Scope {
public:
    Scope(internal::HostCore& host, internal::ScopeRecord& record);
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    // The state cell `name` of this view, made with `initial` the first time.
    // REQUIRES: a name is always declared with the same type.
    template <class T>
    [[nodiscard]] State<T> state(const std::string& name, T initial) {
        std::shared_ptr<internal::CellBase>& slot = cellSlot(name);
        if (!slot) slot = attach(std::make_shared<internal::Cell<T>>(std::move(initial)), name);
        auto cell = std::dynamic_pointer_cast<internal::Cell<T>>(slot);
        if (!cell) typeMismatch("state", name);
        return State<T>(std::move(cell));
    }

    // The object `name` owned by this view: `make()` runs once per identity, however often the
    // view is rebuilt. An ObservableObject is also observed.
    template <class T, class Make>
    [[nodiscard]] std::shared_ptr<T> stateObject(const std::string& name, Make&& make) {
        std::shared_ptr<void>& slot = objectSlot(name, typeid(T));
        if (!slot) slot = std::shared_ptr<T>(make());
        auto object = std::static_pointer_cast<T>(slot);
        if constexpr (std::is_base_of_v<ObservableObject, T>) observe(*object);
        return object;
    }

    // Rebuilds the screen when `object` will change (for as long as this view's latest build
    // observed it).
    void observe(const ObservableObject& object);

    // Builds a child view at this view's identity + `type` + its position among the children
    // of that type.
    [[nodiscard]] Node child(std::string_view type, const Body& body);
    // The same at an explicit key, unique among this view's children of that type.
    [[nodiscard]] Node child(std::string_view type, const std::string& key, const Body& body);

    // Builds `view` (a type with `static constexpr const char* kTypeName` and
    // `Node body(Scope&) const`) as a child.
    template <class V>
    [[nodiscard]] Node view(const V& view) {
        return child(V::kTypeName, [&view](Scope& s) { return view.body(s); });
    }

    // "Root/ManagedToviBalanceScreen#0/AddFundsSheet#0", for messages and tools.
    [[nodiscard]] const std::string& identity() const;

private:
    std::shared_ptr<internal::CellBase>& cellSlot(const std::string& name);
    std::shared_ptr<internal::CellBase> attach(std::shared_ptr<internal::CellBase> cell, const std::string& name);
    std::shared_ptr<void>& objectSlot(const std::string& name, std::type_index type);
    [[noreturn]] void typeMismatch(const char* what, const std::string& name) const;

    internal::HostCore& host_;
    internal::ScopeRecord& record_;
    std::map<std::string, int, std::less<>> childCounts_;
    std::unordered_set<const void*> observed_;
};

// A binding to a published property of an object that the binding keeps alive.
template <class Owner, class T>
[[nodiscard]] Binding<T> bind(std::shared_ptr<Owner> owner, Published<T> Owner::*property) {
    return Binding<T>([owner, property] { return ((*owner).*property).get(); },
                      [owner, property](T value) { ((*owner).*property).set(std::move(value)); });
}

// Runs `changes`; state they set is recorded as animated with `animation` (see above).
void withAnimation(const Animation& animation, const std::function<void()>& changes);

}  // namespace platform::view
