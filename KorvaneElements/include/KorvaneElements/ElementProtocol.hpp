#pragma once
// What every secure element offers a host: its event stream, its flags, ways to fill it from a
// reference or mirror another element, and its id. None of it reveals a value.

#include <memory>
#include <string>

#include "KorvaneElements/ElementEvent.hpp"
#include "KorvaneElements/ElementMetadata.hpp"
#include "platform/PassthroughSubject.hpp"

namespace korvane::elements {

class ElementValueReference;
class TextElementUITextField;

class ElementProtocol {
public:
    virtual ~ElementProtocol() = default;

    [[nodiscard]] virtual platform::PassthroughSubject<ElementEvent>& subject() = 0;
    [[nodiscard]] virtual const ElementMetadata& metadata() const = 0;
    virtual void setValue(const std::shared_ptr<ElementValueReference>& elementValueReference) = 0;
    virtual void setValueRef(const std::shared_ptr<TextElementUITextField>& element) = 0;
    [[nodiscard]] virtual const std::string& elementId() const = 0;
    virtual void setElementId(std::string id) = 0;
};

}  // namespace korvane::elements
