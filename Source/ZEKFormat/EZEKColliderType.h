#pragma once

#include "ZEKFormat/EZEKColliderShape.h"

namespace zek
{

/// The type of a node's collider: any int, carried from the file without interpretation.
enum class EZEKColliderType : int
{
};

/// Returns the type of a collider in a file that is too old to store it: 1 for a sphere, 0 for any
/// other shape.
constexpr EZEKColliderType GetUnstoredColliderType(EZEKColliderShape shape)
{
    return static_cast<EZEKColliderType>(shape == EZEKColliderShape::Sphere ? 1 : 0);
}

} // namespace zek
