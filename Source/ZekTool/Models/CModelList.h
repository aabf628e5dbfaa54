#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "ZekTool/Models/CPathReader.h"
#include "ZekTool/Models/SModelPath.h"

namespace zektool
{

/// Returns what to say of a path on the command line that could not be followed.
std::string MakeNoPathError(const std::string& path, const std::string& error);

/// The models that are worked on, in their order.
class CModelList
{
public:
    /// All that paths of the command line stand for. Throws `CUsageError` when one does not exist
    /// or is a folder without a model, after looking at all of them.
    CModelList(const std::vector<std::string>& paths, std::vector<std::string> patterns);

    /// What the paths stand for that a reader reads, each looked at when it is its turn.
    CModelList(std::unique_ptr<CPathReader> reader, std::vector<std::string> patterns);

    /// Takes the next model. False at the end.
    bool Next(SModelPath& model);

    /// Takes the next model whose path is known already. False when there is none.
    bool NextKnown(SModelPath& model);

    /// Takes the next of those that have not been taken, to say that it is not done: what a path
    /// that is still to be read stands for is not looked at. After Ctrl-C, and as long as the list
    /// comes without waiting.
    bool NextUndone(SModelPath& model);

    /// The number of all models, or 0 when it is not known.
    std::size_t GetTotal() const { return m_Reader ? 0 : m_Models.size(); }

    /// Tells whether there is more than one path, or one that is a folder.
    bool IsSeveral() const { return m_IsSeveral; }

    /// Returns all models before the first is taken; of a list that is read none is known.
    const std::vector<SModelPath>& GetModels() const { return m_Models; }

    /// Why the reader could not read on, or empty.
    std::string GetError() const;

private:
    std::vector<std::string> m_Patterns;
    std::unique_ptr<CPathReader> m_Reader;
    std::vector<SModelPath> m_Models;
    std::size_t m_Next = 0;
    bool m_IsSeveral = true;
};

} // namespace zektool
