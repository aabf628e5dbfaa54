#pragma once

#include "ZekTool/Command/CModelCommand.h"
#include "ZekTool/Models/SModelInfo.h"

namespace zektool
{

/// Shows what is in each model.
class CInfoCommand : public CModelCommand
{
public:
    explicit CInfoCommand(bool isJson) : CModelCommand(isJson) {}

    SResult Run(const SModelPath& model) override;
    std::string MakeSummary(const STally& tally) const override;

private:
    std::string MakeText(const SModelPath& model, const SModelInfo& info) const;
    std::string MakeJson(const SModelPath& model, const SModelInfo& info) const;
};

} // namespace zektool
