#pragma once
// ElementReferenceProtocol: the one way a value leaves an element. The library's own tokenize
// and proxy calls resolve references at the last moment before a request is sent; a host
// passes references around without reading them.

#include <optional>
#include <string>

#include "KorvaneElements/ElementValueType.hpp"
#include "KorvaneElements/ValueKey.hpp"

namespace korvane::elements {

class ElementReferenceProtocol {
public:
    virtual ~ElementReferenceProtocol() = default;

    // The value itself, for the library's own calls (see ValueKey).
    [[nodiscard]] virtual std::optional<std::string> getValue(ValueKey key) const = 0;

    [[nodiscard]] virtual std::optional<ElementValueType> getValueType() const = 0;
    virtual void setGetValueType(std::optional<ElementValueType> type) = 0;
    [[nodiscard]] virtual std::optional<bool> isComplete() const = 0;
    virtual void setIsComplete(std::optional<bool> complete) = 0;
    [[nodiscard]] virtual const std::string& elementId() const = 0;
    virtual void setElementId(std::string id) = 0;
};

}  // namespace korvane::elements
