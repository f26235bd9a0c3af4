#include "ToviUI/Version.hpp"

// Pasting major, "." and minor makes one floating literal (0.1), so no rounding can creep in.
#define TOVI_UI_NUMBER_OF(major, minor) major##.##minor
#define TOVI_UI_NUMBER(major, minor) TOVI_UI_NUMBER_OF(major, minor)
#define TOVI_UI_TEXT_OF(x) #x
#define TOVI_UI_TEXT(x) TOVI_UI_TEXT_OF(x)

extern "C" {
const double ToviUIVersionNumber = TOVI_UI_NUMBER(TOVI_UI_VERSION_MAJOR, TOVI_UI_VERSION_MINOR);
const unsigned char ToviUIVersionString[] = "ToviUI " TOVI_UI_TEXT(TOVI_UI_VERSION_MAJOR) "." TOVI_UI_TEXT(
    TOVI_UI_VERSION_MINOR) "." TOVI_UI_TEXT(TOVI_UI_VERSION_PATCH);
}
