#pragma once
// ElementValueReference: a value that stands for a part of an element (the month of an expiry,
// a formatted date) without exposing it. `valueMethod` is read when the value is needed, so
// the reference follows the field; `isComplete` is copied when the reference is made.
//
// Shared (std::shared_ptr) like the object it mirrors. Main queue only.

#include <functional>
#include <optional>
#include <string>

#include "KorvaneElements/ElementReferenceProtocol.hpp"

namespace korvane::elements {

class ElementValueReference final : public ElementReferenceProtocol {
public:
    using ValueMethod = std::function<std::string()>;

    ElementValueReference(std::string elementId, ValueMethod valueMethod, std::optional<bool> isComplete,
                          std::optional<ElementValueType> getValueType)
        : elementId_(std::move(elementId)),
          valueMethod_(std::move(valueMethod)),
          isComplete_(isComplete),
          getValueType_(getValueType) {}

    // Absent when there is no value method.
    [[nodiscard]] std::optional<std::string> getValue(ValueKey key) const override;

    [[nodiscard]] bool hasValueMethod() const { return static_cast<bool>(valueMethod_); }
    [[nodiscard]] const ValueMethod& valueMethod(ValueKey /*key*/) const { return valueMethod_; }
    void setValueMethod(ValueMethod method) { valueMethod_ = std::move(method); }

    [[nodiscard]] std::optional<ElementValueType> getValueType() const override { return getValueType_; }
    void setGetValueType(std::optional<ElementValueType> type) override { getValueType_ = type; }
    [[nodiscard]] std::optional<bool> isComplete() const override { return isComplete_; }
    void setIsComplete(std::optional<bool> complete) override { isComplete_ = complete; }
    [[nodiscard]] const std::string& elementId() const override { return elementId_; }
    void setElementId(std::string id) override { elementId_ = std::move(id); }

private:
    std::string elementId_;
    ValueMethod valueMethod_;
    std::optional<bool> isComplete_;
    std::optional<ElementValueType> getValueType_;
};

}  // namespace korvane::elements
