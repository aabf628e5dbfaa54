#pragma once

#include "ZekTool/Command/CModelCommand.h"
#include "ZekTool/Command/SCommandLine.h"
#include "ZekTool/Mark/SMarkOptions.h"
#include "ZekTool/Mark/SMarkResult.h"
#include "ZekTool/Models/CModelList.h"

namespace zektool
{

/// Marks each model.
class CMarkCommand : public CModelCommand
{
public:
    /// An output path is a folder when there are several models, when it is one, or when it ends
    /// with a slash. Throws `CUsageError` when an output would go over another or over a model
    /// of the list, or one depfile were for several models.
    CMarkCommand(const SCommandLine& line, const CModelList& models);

    SResult Run(const SModelPath& model) override;
    std::string MakeSummary(const STally& tally) const override;

private:
    std::string MakeText(const SModelPath& model, const SMarkResult& result) const;
    std::string MakeJson(
        const SModelPath& model, const std::string& outputPath, const SMarkResult& result) const;

    SMarkOptions m_Options;
    bool m_IsOutputFolder;
};

} // namespace zektool
