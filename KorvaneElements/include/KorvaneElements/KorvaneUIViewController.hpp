#pragma once
// KorvaneUIViewController: the only delegate a secure element accepts. A delegate sees every
// typed character (it is asked before each change), so an element refuses any other delegate;
// the class is final so that a host cannot derive a listener from it.

#include "platform/view/TextField.hpp"

namespace korvane::elements {

class KorvaneUIViewController final : public platform::TextFieldDelegate {};

}  // namespace korvane::elements
