#pragma once
// Everything needed to build a view tree.

#include "platform/view/Builders.hpp"
#include "platform/view/Color.hpp"
#include "platform/view/Font.hpp"
#include "platform/view/Geometry.hpp"
#include "platform/view/Kinds.hpp"
#include "platform/view/Modifiers.hpp"
#include "platform/view/Node.hpp"
#include "platform/view/NodeData.hpp"
#include "platform/view/Paint.hpp"
#include "platform/view/Path.hpp"
