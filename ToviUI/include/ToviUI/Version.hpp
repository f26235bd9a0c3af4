#pragma once
// The version symbols the library exports, with C linkage so that any host can read them.

extern "C" {
extern const double ToviUIVersionNumber;
extern const unsigned char ToviUIVersionString[];
}
