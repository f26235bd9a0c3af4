#pragma once
// CurrencyUITextField: a cents entry field that fills like a till. Digits enter from the right:
// typing 1, 2, 3 shows $1.23 and binds 123 cents; the delete key drops the last digit. The caret
// cannot be moved (every touch puts it back at the end) and is not drawn. An amount below one
// cent shows the placeholder.
//
//     auto field = std::make_shared<CurrencyUITextField>(cents, 17, "Amount");
//
// The bound value is written on a later turn of the main queue, never while the field is
// handling a key. Digits are the characters with a whole-number value, of any script; at most
// `kMaximumDigits` of them count, which keeps every amount exact in a double.
//
// Thread safety: main queue only.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/NumberFormatter.hpp"
#include "platform/view/State.hpp"
#include "platform/view/TextField.hpp"

namespace tovi {

class CurrencyUITextField : public platform::TextField {
public:
    static constexpr std::size_t kMaximumDigits = 15;

    CurrencyUITextField(platform::view::Binding<std::int64_t> value, int fontSize, std::optional<std::string> hintText);

    // Stores `value` (cents) in the binding and shows it.
    void updateValue(std::int64_t value);

    // The field's own control actions: reformats after a change, and pins the caret at the end.
    void editingChanged();
    void resetSelection();

    [[nodiscard]] int fontSize() const { return fontSize_; }
    [[nodiscard]] const std::optional<std::string>& hintText() const { return hintText_; }

protected:
    // The delete key drops the last digit, wherever the caret is.
    void deleteBackwardHook() override;

private:
    void render();
    // The digits of the text as they stand, at most `kMaximumDigits`.
    [[nodiscard]] std::string digits() const;
    // The text's digits read as cents; 0 when they are no decimal number.
    [[nodiscard]] std::int64_t centsOfText() const;
    [[nodiscard]] std::string textForCents(std::int64_t cents) const;

    platform::view::Binding<std::int64_t> value_;
    int fontSize_;
    std::optional<std::string> hintText_;
    platform::NumberFormatter formatter_{platform::NumberFormatter::Style::currency};
    // Tells a deferred binding store whether the field still lives.
    std::shared_ptr<int> lifetime_ = std::make_shared<int>(0);
};

}  // namespace tovi
