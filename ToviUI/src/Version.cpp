#include "ToviUI/Version.hpp"

extern "C" {
const double ToviUIVersionNumber = TOVI_UI_VERSION_NUMBER;
const unsigned char ToviUIVersionString[] = "ToviUI " TOVI_UI_VERSION_STRING;
}
