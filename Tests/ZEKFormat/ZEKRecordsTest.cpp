#include "ZEKFormat/ZEKRecords.h"

#include <gtest/gtest.h>

using zek::GetProbeName;
using zek::SZEKProbe;

TEST(ProbeName, IsTheIndexWhereTheFileHasNone)
{
    SZEKProbe probe;
    probe.index = 12;
    EXPECT_EQ("12", GetProbeName(probe));
}

TEST(ProbeName, IsThatOfTheFile)
{
    SZEKProbe probe;
    probe.index = 12;
    probe.hasName = true;
    EXPECT_EQ("", GetProbeName(probe));
    probe.name = "Hall";
    EXPECT_EQ("Hall", GetProbeName(probe));
}

TEST(Records, HaveWhatOldVersionsMean)
{
    const zek::SZEKMaterial material;
    EXPECT_FALSE(material.firstFlag);
    EXPECT_TRUE(material.secondFlag);
    EXPECT_EQ(-1, material.roughnessTextureIndex);
    EXPECT_EQ(1.0f, material.secondTransform.scale.u);
    EXPECT_EQ(1.0f, material.secondTransform.scale.v);
    EXPECT_EQ(0.0f, material.secondTransform.offset.u);
    EXPECT_EQ(0.0f, material.secondTransform.offset.v);
    EXPECT_EQ(nullptr, zek::SZEKHeader().processedMarker.address);
    EXPECT_EQ(-1, zek::SZEKTexture().flags.place.offset);
}
