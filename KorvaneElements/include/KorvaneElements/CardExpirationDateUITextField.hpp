#pragma once
// CardExpirationDateUITextField: the secure element for a card's expiry, "MM/YY".
//
// A lone first digit above 1 is prefixed with "0" ("5" becomes "05"), a month above 12 typed
// after a 1 is refused (the text goes back to "1"), and a date before the current month is
// invalid. "Now" is `platform::clock().now()` in the current calendar, so tests can set it.
//
// The month, the four-digit year and any formatted form of the date leave the element as
// references (`month()`, `year()`, `format()`), resolved by the library at request time.
//
// Create with std::make_shared. Main queue only.

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "KorvaneElements/ElementValueReference.hpp"
#include "KorvaneElements/TextElementUITextField.hpp"

namespace korvane::elements {

class CardExpirationDateUITextField final : public TextElementUITextField {
public:
    CardExpirationDateUITextField();
    explicit CardExpirationDateUITextField(platform::Rect frame);

    // Throws ElementConfigException(configNotAllowed) unless `enableCopy` or `copyIconColor` is
    // present; other options are dropped.
    void setConfig(const std::optional<TextElementOptions>& options) override;

    // The month as typed ("05"), as an `int` value. Read when resolved.
    [[nodiscard]] std::shared_ptr<ElementValueReference> month() const;
    // "20" and the two typed year digits, as an `int` value. Read when resolved.
    // Resolving it while the text has no "/" stops the process.
    [[nodiscard]] std::shared_ptr<ElementValueReference> year() const;
    // The first day of the expiry month at 23:59:59 in the current calendar, formatted with
    // `dateFormat` now. The reference has no value method when the text is no date, including
    // an incomplete one such as "04/6" (year 206). Like `year()`, stops the process when the
    // text has no year after "/".
    [[nodiscard]] std::shared_ptr<ElementValueReference> format(std::string_view dateFormat) const;

    // Fills the field with the last two characters of "00" + month, "/", and the last two of
    // year; null references read as empty ("00/").
    // REQUIRES: a given reference has a value method; otherwise the process stops.
    void setValue(const std::shared_ptr<ElementValueReference>& month,
                  const std::shared_ptr<ElementValueReference>& year);
    using TextElementUITextField::setValue;

    [[nodiscard]] static const ElementMask& expiryMask();

protected:
    [[nodiscard]] std::optional<ElementMask> inputMask() const override { return expiryMask(); }
    void setInputMask(std::optional<ElementMask>) override {}
    [[nodiscard]] Validation validation() const override;
    [[nodiscard]] std::string rewrittenText(std::string text) const override;
    void textFieldDidChange() override;

private:
    [[nodiscard]] std::string monthText() const;
    [[nodiscard]] std::string yearText() const;
    [[nodiscard]] bool dateIsCurrent() const;
};

}  // namespace korvane::elements
