#pragma once

#include <string_view>

/// The names of a model file's bones. What each function is given is a `CZEKWalk`.
namespace zek
{

template <typename Walk>
bool WalkBone(Walk& walk)
{
    std::string_view name;
    int value;
    if (!walk.Text("name", name) || !walk.Int("value", value))
        return false;
    walk.GetSink().Bone(name);
    return true;
}

/// Walks the table, which a file may end before.
template <typename Walk>
bool WalkBoneTable(Walk& walk)
{
    walk.GetSink().BeginSection("bones");
    if (walk.IsLeftLessThanInt())
        return true;
    int count;
    return walk.Int("boneCount", count) &&
           walk.Records("bones", count, [&](int) { return WalkBone(walk); });
}

} // namespace zek
