#include "platform/SerialQueue.hpp"

namespace platform {

SerialQueue::SerialQueue(std::string label) : label_(std::move(label)), thread_(1, label_) {}

}  // namespace platform
