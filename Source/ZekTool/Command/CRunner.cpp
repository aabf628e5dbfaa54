#include "ZekTool/Command/CRunner.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

#include "ZekTool/Output/Interrupt.h"
#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

constexpr std::size_t SlotsPerThread = 64;
constexpr std::size_t MostWaitingBytes = std::size_t{4} * 1024 * 1024;
constexpr std::chrono::milliseconds TickLength(100);
constexpr const char* NoMemory = "not enough memory";

} // namespace

STally CRunner::Run(std::size_t threadCount)
{
    if (m_Models.GetTotal() != 0)
        threadCount = std::min(threadCount, m_Models.GetTotal());
    m_MostSlots = threadCount * SlotsPerThread;
    m_WorkerCount = threadCount;
    std::vector<std::thread> threads = StartThreads(threadCount);
    WaitForWorkers();
    for (std::thread& thread : threads)
        thread.join();
    m_Progress.Clear();
    Guard(
        [this]
        {
            PrintUnfinished();
            PrintNotDone();
        });
    m_Output.Flush();
    if (m_Exception)
        std::rethrow_exception(m_Exception);
    return m_Tally;
}

/// Starts the threads, or as many of them as the system has room for.
std::vector<std::thread> CRunner::StartThreads(std::size_t count)
{
    std::vector<std::thread> threads;
    threads.reserve(count);
    try
    {
        while (threads.size() < count)
            threads.emplace_back([this] { Work(); });
    }
    catch (const std::exception&)
    {
        if (threads.empty())
            throw;
        const std::lock_guard lock(m_Mutex);
        m_WorkerCount -= count - threads.size();
    }
    return threads;
}

/// Does a part of the work. What it throws is kept, to be thrown when all else has been seen to.
template <typename Part>
void CRunner::Guard(Part part)
{
    try
    {
        part();
    }
    catch (const std::exception&)
    {
        const std::lock_guard lock(m_Mutex);
        m_Exception = std::current_exception();
    }
}

void CRunner::Work()
{
    Guard(
        [this]
        {
            while (SSlot* slot = TakeModel())
                Finish(*slot, RunCommand(slot->model));
        });
    const std::lock_guard lock(m_Mutex);
    --m_WorkerCount;
    m_HasRoom.notify_all();
    if (m_WorkerCount == 0)
        m_WorkersEnded.notify_all();
}

/// Takes the next model when there is room for its result; null when there is no more to do. Only
/// one thread at a time waits for the list, so that the others can finish what they are at.
CRunner::SSlot* CRunner::TakeModel()
{
    const std::lock_guard listLock(m_ListMutex);
    {
        std::unique_lock lock(m_Mutex);
        m_HasRoom.wait(lock, [this] { return IsRoom() || IsStopped(); });
        if (IsStopped())
            return nullptr;
    }
    // Made first: without memory for it, a model that has been taken would be lost.
    std::list<SSlot> slot(1);
    if (!m_Models.Next(slot.front().model))
        return nullptr;
    const std::lock_guard lock(m_Mutex);
    m_Slots.splice(m_Slots.end(), slot);
    return &m_Slots.back();
}

/// A slot is always free for the model that all others wait for.
bool CRunner::IsRoom() const
{
    return m_Slots.empty() || (m_Slots.size() < m_MostSlots && m_WaitingBytes < MostWaitingBytes);
}

bool CRunner::IsStopped() const
{
    return IsInterrupted() || m_Output.GetError() != 0 || m_Exception;
}

SResult CRunner::RunCommand(const SModelPath& model)
{
    try
    {
        if (!model.error.empty())
            return m_Command.MakeFailure(model, EOutcome::Failed, model.error);
        return m_Command.Run(model);
    }
    catch (const std::bad_alloc&)
    {
        return m_Command.MakeFailure(model, EOutcome::Failed, NoMemory);
    }
    catch (const std::exception& error)
    {
        return m_Command.MakeFailure(model, EOutcome::Failed, error.what());
    }
}

void CRunner::Finish(SSlot& slot, SResult result)
{
    const std::lock_guard lock(m_Mutex);
    const bool wasRoom = IsRoom();
    m_WaitingBytes += result.output.size();
    slot.result = std::move(result);
    PrintFinished();
    // Waking a thread costs as much as opening a file.
    if (!wasRoom)
        m_HasRoom.notify_all();
}

void CRunner::PrintFinished()
{
    while (!m_Slots.empty() && m_Slots.front().result)
    {
        const SSlot& slot = m_Slots.front();
        Print(slot.model, *slot.result);
        m_WaitingBytes -= slot.result->output.size();
        m_Slots.pop_front();
    }
}

void CRunner::Print(const SModelPath& model, const SResult& result)
{
    if (m_Output.IsFullWith(result.output.size()))
        m_Progress.Clear();
    // What there is no memory for is done again, and must not be printed twice.
    m_Tally.Add(result.outcome, model.path);
    m_Output.Write(result.output);
}

/// Shows ten times a second what there is to show, until the last worker has ended.
void CRunner::WaitForWorkers()
{
    std::unique_lock lock(m_Mutex);
    while (m_WorkerCount > 0)
    {
        const auto end = std::chrono::steady_clock::now() + TickLength;
        m_WorkersEnded.wait_until(lock, end, [this] { return m_WorkerCount == 0; });
        if (m_WorkerCount == 0)
            return;
        if (!m_Output.IsEmpty())
        {
            m_Progress.Clear();
            m_Output.Flush();
        }
        ShowProgress();
        // A worker that waits for room does not hear of Ctrl-C by itself.
        m_HasRoom.notify_all();
    }
}

void CRunner::ShowProgress()
{
    try
    {
        m_Progress.Show(m_Tally, m_Models.GetTotal());
    }
    catch (const std::bad_alloc&)
    {
        // It is shown again soon, and the workers have to be waited for.
    }
}

/// Prints the results that are left when a worker could not finish its model.
void CRunner::PrintUnfinished()
{
    PrintFinished();
    while (!m_Slots.empty())
    {
        SSlot& slot = m_Slots.front();
        Finish(slot, m_Command.MakeFailure(slot.model, EOutcome::Failed, NoMemory));
    }
}

void CRunner::PrintNotDone()
{
    if (!IsStopped())
        return;
    // Where Ctrl-C does not end it, whoever writes a list may go on for long.
    SModelPath model;
    while (IsInterrupted() ? m_Models.NextUndone(model) : m_Models.NextKnown(model))
        Print(model, m_Command.MakeFailure(model, EOutcome::NotDone, "not done"));
}

} // namespace zektool
