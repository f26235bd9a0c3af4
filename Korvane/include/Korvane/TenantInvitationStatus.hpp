#pragma once
// TenantInvitationStatus: where an invitation to the tenant stands. On the wire, in JSON and
// in the "status" query item alike, a case is its raw value ("PENDING", "EXPIRED"); a raw
// value the client doesn't know fails decoding rather than guessing a case.

#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "AnyCodable/Value.hpp"
#include "Korvane/StringEnum.hpp"

namespace korvane {

enum class TenantInvitationStatus { pending, expired };

constexpr auto jsonCases(TenantInvitationStatus) {
    return std::array{std::pair{TenantInvitationStatus::pending, std::string_view("PENDING")},
                      std::pair{TenantInvitationStatus::expired, std::string_view("EXPIRED")}};
}

// The query value of the enum: its raw value, not the case name or its ordinal.
[[nodiscard]] inline anycodable::Value encodeToJSON(TenantInvitationStatus value) {
    return anycodable::Value(std::string(rawValue(value)));
}

}  // namespace korvane
