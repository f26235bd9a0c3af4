#pragma once
// CardNumberUITextField: the secure element for a card number.
//
// Its mask, transform (blanks and tabs removed) and validation (Luhn) are its own; a host may
// only turn on the copy icon. The mask follows the detected brand in the same keystroke (four
// groups of four until a brand is known; 4-6-5 once a number starts with 34, say). Events carry
// the brand, and for a complete number the bin and last four digits; `cardMetadata()` holds the
// same three. The whole number leaves the element only through `getValue(ValueKey)`.
//
// Create with std::make_shared. Main queue only.

#include <optional>
#include <string_view>
#include <vector>

#include "KorvaneElements/CardBrand.hpp"
#include "KorvaneElements/CardElementProtocol.hpp"
#include "KorvaneElements/TextElementUITextField.hpp"

namespace korvane::elements {

// The Luhn check digit test. Empty text and any character that is not one ASCII digit fail.
[[nodiscard]] bool luhnValid(std::string_view text);

class CardNumberUITextField final : public TextElementUITextField,
                                    public CardElementProtocol,
                                    public CardNumberElementProtocol {
public:
    CardNumberUITextField();
    explicit CardNumberUITextField(platform::Rect frame);

    // Throws ElementConfigException(configNotAllowed) unless `enableCopy` or `copyIconColor` is
    // present; any mask, transform, validation or value type passed along is dropped.
    void setConfig(const std::optional<TextElementOptions>& options) override;

    [[nodiscard]] const CardMetadata& cardMetadata() const override { return cardMetadata_; }
    [[nodiscard]] std::optional<std::vector<CardBrandDetails>> cardTypes() const override { return std::nullopt; }
    void setCardTypes(std::optional<std::vector<CardBrandDetails>> cardTypes) override;

    // The last detection (absent when the value is no integer), and the mask of the last brand
    // seen, which is never cleared.
    [[nodiscard]] const std::optional<CardBrandResults>& cardBrand() const { return cardBrand_; }
    [[nodiscard]] const std::optional<ElementMask>& cardMask() const { return cardMask_; }

    // Four groups of four digit positions.
    [[nodiscard]] static const ElementMask& defaultMask();

protected:
    [[nodiscard]] std::optional<ElementMask> inputMask() const override;
    void setInputMask(std::optional<ElementMask>) override {}
    [[nodiscard]] std::optional<ElementTransform> inputTransform() const override;
    void setInputTransform(std::optional<ElementTransform>) override {}
    [[nodiscard]] Validation validation() const override;
    [[nodiscard]] EventHook getElementEvent() override;
    [[nodiscard]] std::optional<ElementMask> maskForText(std::string_view text) const override;
    void textFieldDidChange() override;

private:
    ElementEvent buildTextChangeEvent(const std::optional<std::string>& value, const ElementEvent& base);
    void detect(std::string_view value);

    CardMetadata cardMetadata_;
    std::optional<CardBrandResults> cardBrand_;
    std::optional<ElementMask> cardMask_;
};

}  // namespace korvane::elements
