#pragma once

#include "ZEKFormat/ZEKFlags.h"
#include "ZEKFormat/ZEKRecords.h"
#include "ZEKFormat/ZEKVersion.h"

/// The reflection probes of a model file. What each function is given is a `CZEKWalk`.
namespace zek
{

template <typename Walk>
bool WalkProbe(Walk& walk, int version, int index)
{
    int value;
    const auto walkFields = [](auto& fields)
    {
        fields.Vector("firstVector");
        fields.Vector("secondVector");
    };
    if (!walk.Int("value", value) || !walk.Block("vectors", walkFields))
        return false;

    SZEKProbe probe;
    probe.index = index;
    if (version >= version::ReflectionProbeFlags)
    {
        int secondValue;
        if (!walk.Int("secondValue", secondValue) || !WalkFlags(walk, probe.flags))
            return false;
        walk.GetSink().ProbeFlags(probe.flags);
    }
    probe.hasName = version >= version::ReflectionProbeName;
    if (probe.hasName && !walk.Text("name", probe.name))
        return false;
    walk.GetSink().Probe(probe);
    return true;
}

/// Walks the section, which before version 26 stands inside that of the materials.
template <typename Walk>
bool WalkReflectionProbes(Walk& walk, int version)
{
    walk.GetSink().BeginSection("probes");
    int count = 0;
    if (version >= version::ReflectionProbeCount && !walk.Int("probeCount", count))
        return false;
    if (version >= version::ReflectionProbeRecords &&
        !walk.Records("probes", count, [&](int i) { return WalkProbe(walk, version, i); }))
        return false;
    walk.GetSink().ProbeCount(count);
    return true;
}

} // namespace zek
