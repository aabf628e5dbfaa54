#pragma once

#include <string>

#include "ZekTool/Models/SModelPath.h"
#include "ZekTool/Output/STally.h"

namespace zektool
{

/// What came of a model, and what is printed of it.
struct SResult
{
    EOutcome outcome;
    std::string output; ///< whole lines
};

/// A command that does the same to each model. Several threads call it at once.
class CModelCommand
{
public:
    /// Prints JSON or text.
    explicit CModelCommand(bool isJson) : m_IsJson(isJson) {}

    virtual ~CModelCommand() = default;

    /// Does the command to a model.
    virtual SResult Run(const SModelPath& model) = 0;

    /// Returns the result of a model that it could not be done to, or was not.
    virtual SResult
    MakeFailure(const SModelPath& model, EOutcome outcome, const std::string& reason);

    /// Returns what came of the models, in a few words.
    virtual std::string MakeSummary(const STally& tally) const = 0;

protected:
    bool IsJson() const { return m_IsJson; }

private:
    bool m_IsJson;
};

} // namespace zektool
