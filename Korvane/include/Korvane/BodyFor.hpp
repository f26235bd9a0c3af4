#pragma once
// BodyFor: the operation a request body is written for.
//
// The vault often takes the same fields to create a resource and to replace it. Such a body is
// one template over BodyFor, so that its fields are declared once while the create and the
// update body stay two types: each operation's row names the body it takes, and one can't be
// handed to the other by mistake.

namespace korvane {

enum class BodyFor { create, update };

}  // namespace korvane
