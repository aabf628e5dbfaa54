#pragma once

namespace zek
{

/// The shape of a node's collider. A file with any other value is malformed.
enum class EZEKColliderShape : int
{
    None = -1,  ///< no collider
    Box = 0,    ///< centre and size
    Sphere = 1, ///< centre and radius; the radius is all three components of the size
    Mesh = 2,   ///< centre and size, and an optional mesh
};

/// Tells whether an int of a file is one of these.
constexpr bool IsColliderShape(int shape)
{
    return shape >= static_cast<int>(EZEKColliderShape::None) &&
           shape <= static_cast<int>(EZEKColliderShape::Mesh);
}

} // namespace zek
