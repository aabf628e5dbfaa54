#pragma once

namespace zek
{

/// What a field of a model file is made of: one value of a type, or several in a row.
enum class EZEKFieldType
{
    Byte,
    Short, ///< signed, 16 bits
    Word,  ///< unsigned, 16 bits
    Int,   ///< signed, 32 bits
    Float,
    Text, ///< bytes up to a zero byte, which belongs to the field
};

/// Returns the size in bytes of one value of a type; 1 for a text.
constexpr int GetSize(EZEKFieldType type)
{
    switch (type)
    {
    case EZEKFieldType::Short:
    case EZEKFieldType::Word:
        return 2;
    case EZEKFieldType::Int:
    case EZEKFieldType::Float:
        return 4;
    case EZEKFieldType::Byte:
    case EZEKFieldType::Text:
        break;
    }
    return 1;
}

/// Returns the name of a type, as listings of a model show it.
constexpr const char* GetName(EZEKFieldType type)
{
    switch (type)
    {
    case EZEKFieldType::Byte:
        return "byte";
    case EZEKFieldType::Short:
        return "short";
    case EZEKFieldType::Word:
        return "word";
    case EZEKFieldType::Int:
        return "int";
    case EZEKFieldType::Float:
        return "float";
    case EZEKFieldType::Text:
        break;
    }
    return "text";
}

} // namespace zek
