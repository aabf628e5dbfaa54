#pragma once

namespace zek
{

/// The shader of a material, known by its number alone, which decides what parameters a material
/// record ends with. Any other value is accepted and has none.
enum class EZEKShaderType : int
{
    Shader0 = 0, ///< roughness index (version 14 on); two floats (version 2 on)
    Shader1 = 1, ///< an index and a block of parameters (version 24 on)
    Shader2 = 2, ///< a colour and two floats; two colours and three floats more (version 9 on)
    Shader3 = 3, ///< two colours and five floats
    Shader4 = 4, ///< nothing
    Shader5 = 5, ///< nothing
    Shader6 = 6, ///< a float and an int
    Shader7 = 7, ///< roughness index; two floats (version 2 on)
};

} // namespace zek
