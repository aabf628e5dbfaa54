#include <type_traits>

#include <gtest/gtest.h>

#include "Support/IntLimits.h"
#include "ZEKFormat/EZEKBlendMode.h"
#include "ZEKFormat/EZEKColliderShape.h"
#include "ZEKFormat/EZEKColliderType.h"
#include "ZEKFormat/EZEKShaderType.h"

using zek::EZEKBlendMode;
using zek::EZEKColliderShape;
using zek::EZEKColliderType;
using zek::EZEKShaderType;

namespace
{

/// Expects an enumeration to be stored as an int and to carry any value of one.
template <typename Enumeration>
void ExpectCarriesAnyInt()
{
    EXPECT_TRUE((std::is_same_v<int, std::underlying_type_t<Enumeration>>));
    for (int value : {testsupport::LowestInt, -1, 0, 1, 12345, testsupport::HighestInt})
        EXPECT_EQ(value, static_cast<int>(static_cast<Enumeration>(value)));
}

} // namespace

TEST(EZEKColliderShape, HasTheValuesOfTheFile)
{
    EXPECT_EQ(-1, static_cast<int>(EZEKColliderShape::None));
    EXPECT_EQ(0, static_cast<int>(EZEKColliderShape::Box));
    EXPECT_EQ(1, static_cast<int>(EZEKColliderShape::Sphere));
    EXPECT_EQ(2, static_cast<int>(EZEKColliderShape::Mesh));
}

TEST(EZEKColliderShape, IsStoredAsAnInt)
{
    ExpectCarriesAnyInt<EZEKColliderShape>();
}

TEST(EZEKColliderType, CarriesAnyInt)
{
    ExpectCarriesAnyInt<EZEKColliderType>();
}

TEST(EZEKColliderType, IsOneForASphereAndZeroForOtherShapesWhereTheFileDoesNotStoreIt)
{
    EXPECT_EQ(0, static_cast<int>(zek::GetUnstoredColliderType(EZEKColliderShape::Box)));
    EXPECT_EQ(1, static_cast<int>(zek::GetUnstoredColliderType(EZEKColliderShape::Sphere)));
    EXPECT_EQ(0, static_cast<int>(zek::GetUnstoredColliderType(EZEKColliderShape::Mesh)));
}

TEST(EZEKShaderType, CountsFromZeroToSeven)
{
    EXPECT_EQ(0, static_cast<int>(EZEKShaderType::Shader0));
    EXPECT_EQ(1, static_cast<int>(EZEKShaderType::Shader1));
    EXPECT_EQ(2, static_cast<int>(EZEKShaderType::Shader2));
    EXPECT_EQ(3, static_cast<int>(EZEKShaderType::Shader3));
    EXPECT_EQ(4, static_cast<int>(EZEKShaderType::Shader4));
    EXPECT_EQ(5, static_cast<int>(EZEKShaderType::Shader5));
    EXPECT_EQ(6, static_cast<int>(EZEKShaderType::Shader6));
    EXPECT_EQ(7, static_cast<int>(EZEKShaderType::Shader7));
}

TEST(EZEKShaderType, CarriesAnyInt)
{
    ExpectCarriesAnyInt<EZEKShaderType>();
}

TEST(EZEKBlendMode, CarriesAnyInt)
{
    ExpectCarriesAnyInt<EZEKBlendMode>();
}
