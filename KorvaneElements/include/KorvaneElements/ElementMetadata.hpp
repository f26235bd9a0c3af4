#pragma once
// The flags of an element's last computation: all that a host may know about its value.

namespace korvane::elements {

struct ElementMetadata {
    bool complete = true;
    bool empty = true;
    bool valid = true;
    bool maskSatisfied = false;

    friend bool operator==(const ElementMetadata&, const ElementMetadata&) = default;
};

}  // namespace korvane::elements
