#pragma once
// Card elements: the card facts a host may read (brand, bin and last four of a complete number)
// and the catalogue hook of the number element.

#include <optional>
#include <vector>

#include "KorvaneElements/CardBrand.hpp"

namespace korvane::elements {

class CardElementProtocol {
public:
    virtual ~CardElementProtocol() = default;
    [[nodiscard]] virtual const CardMetadata& cardMetadata() const = 0;
};

class CardNumberElementProtocol {
public:
    virtual ~CardNumberElementProtocol() = default;
    // Always absent when read.
    [[nodiscard]] virtual std::optional<std::vector<CardBrandDetails>> cardTypes() const = 0;
    // A value replaces the catalogue as `CardBrand::addCardBrands` does; absent does nothing.
    virtual void setCardTypes(std::optional<std::vector<CardBrandDetails>> cardTypes) = 0;
};

}  // namespace korvane::elements
