#include "platform/ObservableObject.hpp"

#include <string>

#include "platform/Fatal.hpp"

namespace platform::internal {

void checkConfinement(const ObjectCore& core, std::string_view property) {
    const std::thread::id confinedTo = core.confinedTo.load();
    if (confinedTo == std::thread::id{} || confinedTo == std::this_thread::get_id()) return;
    std::string message = "ObservableObject: ";
    message.append(property);
    message.append(" changed on a background thread; publish changes from the main queue");
    fatalStop(message);
}

}  // namespace platform::internal
