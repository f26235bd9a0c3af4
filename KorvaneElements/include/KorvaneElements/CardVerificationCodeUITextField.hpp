#pragma once
// CardVerificationCodeUITextField: the secure element for a card's verification code.
//
// Alone it takes three or four digits. Linked to a number element (through
// `CardVerificationCodeOptions`) it follows that element's brand: the mask takes the brand's
// code length in the same keystroke as the number, and a "maskChange" event announces it. The
// text already typed is not rewritten: a four-digit code stays visible after the brand moves to
// three digits, and simply stops satisfying the mask.
//
// Create with std::make_shared. Main queue only.

#include <memory>
#include <optional>

#include "KorvaneElements/CardNumberUITextField.hpp"
#include "KorvaneElements/TextElementUITextField.hpp"
#include "platform/Cancellable.hpp"
#include "platform/view/Color.hpp"

namespace korvane::elements {

struct CardVerificationCodeOptions {
    std::shared_ptr<CardNumberUITextField> cardNumberUITextField{};
    std::optional<bool> enableCopy{};
    std::optional<platform::view::Color> copyIconColor{};
};

class CardVerificationCodeUITextField final : public TextElementUITextField {
public:
    CardVerificationCodeUITextField();
    explicit CardVerificationCodeUITextField(platform::Rect frame);

    // Always throws ElementConfigException(configNotAllowed): a code field is configured with
    // CardVerificationCodeOptions.
    void setConfig(const std::optional<TextElementOptions>& options) override;
    // Links the number element (each call adds a subscription) and applies the copy options.
    void setConfig(const CardVerificationCodeOptions& options);

    [[nodiscard]] const std::shared_ptr<CardNumberUITextField>& cardNumberUITextField() const { return cardNumber_; }
    [[nodiscard]] const std::optional<ElementMask>& cvcMask() const { return cvcMask_; }

protected:
    [[nodiscard]] std::optional<ElementMask> inputMask() const override;
    void setInputMask(std::optional<ElementMask>) override {}
    [[nodiscard]] Validation validation() const override;
    [[nodiscard]] EventHook getElementEvent() override;

private:
    [[nodiscard]] bool maskTest(const std::optional<std::string>& text) const;
    void updateCvcMask();

    std::shared_ptr<CardNumberUITextField> cardNumber_;
    platform::CancellableSet cvcCancellables_;
    std::optional<ElementMask> cvcMask_;
};

}  // namespace korvane::elements
