#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "ZekTool/Command/CModelCommand.h"
#include "ZekTool/Models/CModelList.h"
#include "ZekTool/Output/COutput.h"
#include "ZekTool/Output/CProgress.h"
#include "ZekTool/Output/STally.h"

namespace zektool
{

/// Does a command to all models of a list on several threads, and prints the results in the order
/// of the list. When a model takes long, only so many results wait for it.
class CRunner
{
public:
    /// Borrows all of them.
    CRunner(CModelCommand& command, CModelList& models, COutput& output, CProgress& progress)
        : m_Command(command)
        , m_Models(models)
        , m_Output(output)
        , m_Progress(progress)
    {
    }

    /// Works until all models are done, or until Ctrl-C or an error of the output, after which the
    /// models in work are finished and no other is begun. Returns what came of them; the others
    /// that are known count as not done. Throws when memory has run out, but for one model alone,
    /// after it has printed the same.
    STally Run(std::size_t threadCount);

private:
    /// A model that has been taken from the list.
    struct SSlot
    {
        SModelPath model;
        std::optional<SResult> result; ///< once it is done
    };

    std::vector<std::thread> StartThreads(std::size_t count);
    template <typename Part>
    void Guard(Part part);
    void Work();
    SSlot* TakeModel();
    bool IsRoom() const;
    bool IsStopped() const;
    SResult RunCommand(const SModelPath& model);
    void Finish(SSlot& slot, SResult result);
    void PrintFinished();
    void Print(const SModelPath& model, const SResult& result);
    void WaitForWorkers();
    void ShowProgress();
    void PrintUnfinished();
    void PrintNotDone();

    CModelCommand& m_Command;
    CModelList& m_Models;
    COutput& m_Output;
    CProgress& m_Progress;

    std::mutex m_ListMutex; // held while a model is taken from the list; locked before the other
    std::mutex m_Mutex;     // held for everything below
    std::condition_variable m_HasRoom;      // a worker may wait for it, the one that has the list
    std::condition_variable m_WorkersEnded; // the thread that runs them waits for it
    std::list<SSlot> m_Slots; // models in work and results that wait, in the order of the list
    std::size_t m_WaitingBytes = 0; // of results in the slots
    std::size_t m_MostSlots = 0;
    std::size_t m_WorkerCount = 0;  // still at work
    std::exception_ptr m_Exception; // what a part of the work threw last, or null
    STally m_Tally;
};

} // namespace zektool
