#pragma once
// SheetHeader: a sheet's title row: the title centred, a back button (24x24) at the leading end
// when `onBackClicked` is present and a done button at the trailing end when `onDoneClicked`
// is. An absent button keeps its 24-point place empty, so the title stays centred.
// Accessibility identifiers: "sheetHeader.back", "sheetHeader.done".

#include <functional>
#include <string>

#include "platform/view/Node.hpp"

namespace tovi {

struct SheetHeader {
    std::string title;
    std::function<void()> onBackClicked = {};
    std::function<void()> onDoneClicked = {};

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
