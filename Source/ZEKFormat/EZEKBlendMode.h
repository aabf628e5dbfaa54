#pragma once

namespace zek
{

/// How a material is blended: any int, carried from the file without interpretation.
enum class EZEKBlendMode : int
{
};

} // namespace zek
