#include "Support/SModel.h"

namespace testsupport
{

SModel MakeFullModel(int version)
{
    SModel model;
    model.version = version;

    for (int shape = -1; shape <= 2; ++shape)
    {
        SNode node;
        node.name = "node" + std::to_string(shape);
        node.colliderShape = shape;
        node.offsetFlag = shape == 0 ? 1 : 0;
        node.referenceSelector = shape == 1 ? 1 : 0;
        model.nodes.push_back(node);
    }
    SNode meshCollider;
    meshCollider.colliderShape = 2;
    meshCollider.hasMesh = 1;
    meshCollider.mesh.streams = {1, 0, 0, 0, 0, 0};
    model.nodes.push_back(meshCollider);

    SMesh plain;
    plain.primitives = {SPrimitive(), SPrimitive{1, {}}};
    SMesh full;
    full.streams = {1, 1, 1, 1, 1, 1};
    full.morphNames = {"smile", ""};
    model.meshes = {plain, full};

    for (int shaderType = -1; shaderType <= 8; ++shaderType)
    {
        SMaterial material;
        material.name = "material" + std::to_string(shaderType);
        material.shaderType = shaderType;
        material.uvListFlag = shaderType % 2 == 0 ? 1 : 0;
        material.subFlag = 1;
        model.materials.push_back(material);
    }

    model.textures = {STexture{"first.png", 1, {}}, STexture{"", 0, {}}};
    model.probes = {SProbe(), SProbe()};
    model.probes[1].name = "Hall";
    model.bones = {SBone(), SBone{"", 0}};
    model.lightmaps = {SLightmap(), SLightmap{"LightMap001.png", {}}};
    return model;
}

} // namespace testsupport
