#pragma once
// View state: `State<T>` and `Binding<T>`.
//
// A `State<T>` is a handle to a cell that belongs to one view identity in a screen host (see
// Scope.hpp). The cell survives rebuilds of that identity and is dropped when the view leaves
// the tree. Setting it tells the host, which rebuilds the tree on a later turn of the main
// queue; setting it to an equal value changes nothing. Handles are cheap to copy into event
// handlers: a handler that runs after its view left the tree sets a cell nobody reads.
//
// A `Binding<T>` reads and writes a value that someone else owns: a parent's state, a view
// model's published property (`bind` in Scope.hpp), or a constant for previews.
//
//     auto isLoading = scope.state("isLoading", false);
//     Button("Save", [isLoading] { isLoading.set(true); });
//     ChildSheet{.isPresented = isLoading.binding()}
//
// Thread safety: none; state is read and written on the host's thread (the main queue).

#include <concepts>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace platform::view {

namespace internal {

// A cell and whom it tells of a change. `changed` is empty once the identity left the tree.
struct CellBase {
    virtual ~CellBase() = default;
    std::string name;
    std::function<void(const std::string& name)> changed;
};

template <class T>
struct Cell final : CellBase {
    explicit Cell(T initial) : value(std::move(initial)) {}
    T value;
};

}  // namespace internal

template <class T>
class Binding {
public:
    Binding(std::function<T()> get, std::function<void(T)> set) : get_(std::move(get)), set_(std::move(set)) {}

    // A binding that always reads `value` and ignores writes, for previews.
    [[nodiscard]] static Binding constant(T value) {
        return Binding([value = std::move(value)] { return value; }, [](T) {});
    }

    [[nodiscard]] T get() const { return get_(); }
    void set(T value) const { set_(std::move(value)); }

private:
    std::function<T()> get_;
    std::function<void(T)> set_;
};

template <class T>
class State {
public:
    explicit State(std::shared_ptr<internal::Cell<T>> cell) : cell_(std::move(cell)) {}

    [[nodiscard]] const T& get() const { return cell_->value; }
    [[nodiscard]] const T& operator*() const { return cell_->value; }
    const T* operator->() const { return &cell_->value; }

    void set(T value) const {
        if constexpr (std::equality_comparable<T>) {
            if (cell_->value == value) return;
        }
        cell_->value = std::move(value);
        if (cell_->changed) cell_->changed(cell_->name);
    }

    [[nodiscard]] Binding<T> binding() const {
        return Binding<T>([cell = cell_] { return cell->value; },
                          [state = *this](T value) { state.set(std::move(value)); });
    }

    [[nodiscard]] const std::string& name() const { return cell_->name; }

private:
    std::shared_ptr<internal::Cell<T>> cell_;
};

}  // namespace platform::view
