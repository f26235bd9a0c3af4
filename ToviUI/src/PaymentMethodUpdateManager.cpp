#include "ToviUI/PaymentMethodUpdateManager.hpp"

namespace tovi {

PaymentMethodUpdateManager& PaymentMethodUpdateManager::shared() {
    static PaymentMethodUpdateManager* instance = new PaymentMethodUpdateManager();  // never destroyed
    return *instance;
}

}  // namespace tovi
