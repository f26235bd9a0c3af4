#pragma once
// The component's release. The three numbers below are the one place it is declared: the build
// reads them for the installed package's version, and the library exports them as symbols with
// C linkage so that any host can read the version it actually linked.
//
// Keep each number a plain literal on its own line; the build parses them.
#define TOVI_UI_VERSION_MAJOR 0
#define TOVI_UI_VERSION_MINOR 1
#define TOVI_UI_VERSION_PATCH 0

extern "C" {
// Major and minor as a decimal: 0.1 for release 0.1.x.
extern const double ToviUIVersionNumber;
// "ToviUI 0.1.0".
extern const unsigned char ToviUIVersionString[];
}
