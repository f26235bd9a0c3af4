#include "ToviUI/ToviSharedRecords.hpp"

#include "ToviUI/ToviSharedRequests.hpp"

namespace tovi {

const ToviSharedVirtualCard& testCreateVirtualCard() {
    static const ToviSharedVirtualCard card{};
    return card;
}

const ToviSharedProvisioning& testProvisionVirtualCard() {
    static const ToviSharedProvisioning provisioning{};
    return provisioning;
}

const ToviSharedAutoReloadConfigurationStatusDisabled& ToviSharedAutoReloadConfigurationStatusDisabled::disabled() {
    static const ToviSharedAutoReloadConfigurationStatusDisabled value;
    return value;
}

}  // namespace tovi
