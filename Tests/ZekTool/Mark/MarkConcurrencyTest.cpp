#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Support/CModelBuilder.h"
#include "Support/CTemporaryFolder.h"
#include "ZekTool/Mark/CMarker.h"

using testsupport::Bytes;
using testsupport::CModelBuilder;
using testsupport::CTemporaryFolder;
using zektool::Mark;
using zektool::SMarkResult;

namespace files = std::filesystem;

namespace
{

/// How long models are fought over; a check that takes longer sets it in the environment.
std::chrono::seconds GetDuration()
{
    const char* seconds = std::getenv("ZEK_CONCURRENCY_SECONDS");
    return std::chrono::seconds(seconds == nullptr ? 2 : std::atoi(seconds));
}

/// A model and which of its bytes may be marked.
struct SMarkable
{
    Bytes image;
    std::vector<bool> isMark; ///< for each byte
};

SMarkable MakeMarkable(int version)
{
    const CModelBuilder builder = CModelBuilder::Build(testsupport::MakeFullModel(version));
    SMarkable model = {builder.GetImage(), std::vector<bool>(builder.GetImage().size())};
    if (version >= 21)
        model.isMark[builder.GetOffset("processedMarker")] = true;
    for (const auto& offsets :
         {builder.GetTextureFlagOffsets(), builder.GetProbeFlagOffsets(),
          builder.GetLightmapFlagOffsets()})
    {
        for (std::size_t offset : offsets)
            std::fill_n(model.isMark.begin() + static_cast<std::ptrdiff_t>(offset), 4, true);
    }
    return model;
}

/// Keeps replacing, rewriting and cutting a model, and looks each time whether it has stayed what
/// was written, but for its marks.
class CReplacer
{
public:
    CReplacer(const CTemporaryFolder& folder, const std::string& name, unsigned seed)
        : m_Folder(folder)
        , m_Name(name)
        , m_Random(seed)
    {
        for (int version = 16; version <= 26; ++version)
            m_Models.push_back(MakeMarkable(version));
        Replace();
    }

    void Run()
    {
        switch (m_Random() % 3)
        {
        case 0:
            Replace();
            break;
        case 1:
            Rewrite();
            break;
        default:
            m_Size = m_Random() % (m_Size + 1);
            files::resize_file(m_Folder.GetPath(m_Name), m_Size);
        }
        // Anything from at once to after the marks.
        std::this_thread::sleep_for(std::chrono::microseconds(m_Random() % 30000));
        ++m_RoundCount;
        m_TornCount += IsWhole() ? 0 : 1;
    }

    int GetRoundCount() const { return m_RoundCount; }
    int GetTornCount() const { return m_TornCount; }

private:
    void Choose()
    {
        m_pModel = &m_Models[m_Random() % m_Models.size()];
        m_Size = m_pModel->image.size();
    }

    void Replace()
    {
        Choose();
        m_Folder.Write(m_Name + ".new", m_pModel->image);
        files::rename(m_Folder.GetPath(m_Name + ".new"), m_Folder.GetPath(m_Name));
    }

    void Rewrite()
    {
        Choose();
        m_Folder.Write(m_Name, m_pModel->image);
    }

    bool IsWhole() const
    {
        const Bytes bytes = m_Folder.Read(m_Name);
        if (bytes.size() != m_Size)
            return false;
        for (std::size_t i = 0; i < bytes.size(); ++i)
        {
            const bool isMarked = m_pModel->isMark[i] && bytes[i] <= 1;
            if (bytes[i] != m_pModel->image[i] && !isMarked)
                return false;
        }
        return true;
    }

    const CTemporaryFolder& m_Folder;
    std::string m_Name;
    std::minstd_rand m_Random;
    std::vector<SMarkable> m_Models;
    const SMarkable* m_pModel = nullptr; // that the file is made of ...
    std::size_t m_Size = 0;              // ... up to this size
    int m_RoundCount = 0;
    int m_TornCount = 0;
};

/// Calls a function again and again in threads of its own while the object lives.
class CRepetition
{
public:
    CRepetition(int threadCount, const std::function<void()>& function)
    {
        for (int i = 0; i < threadCount; ++i)
            m_Threads.emplace_back(
                [=]
                {
                    while (!m_IsEnding)
                        function();
                });
    }

    ~CRepetition()
    {
        m_IsEnding = true;
        for (std::thread& thread : m_Threads)
            thread.join();
    }

    CRepetition(const CRepetition&) = delete;
    CRepetition& operator=(const CRepetition&) = delete;

private:
    std::atomic<bool> m_IsEnding = false;
    std::vector<std::thread> m_Threads;
};

} // namespace

TEST(MarkConcurrency, NoModelIsTornBetweenMarksAndAProgramThatReplacesAndCutsIt)
{
    const CTemporaryFolder folder;
    folder.Write("tex_dxt/000.dds", "");
    folder.Write("tex_etc/001.pvr", "");
    constexpr int modelCount = 4;
    std::vector<CReplacer> replacers;
    for (unsigned i = 0; i < modelCount; ++i)
        replacers.emplace_back(folder, std::to_string(i) + ".zek", i + 1);

    std::atomic<int> changedCount = 0;
    const auto mark = [&]
    {
        for (int i = 0; i < modelCount; ++i)
        {
            const SMarkResult result = Mark(folder.GetPath(std::to_string(i) + ".zek"), {});
            changedCount += result.outcome == SMarkResult::Changed ? 1 : 0;
        }
    };
    {
        const CRepetition marks(2, mark);
        std::vector<std::thread> threads;
        const auto end = std::chrono::steady_clock::now() + GetDuration();
        for (CReplacer& replacer : replacers)
            threads.emplace_back(
                [&replacer, end]
                {
                    while (std::chrono::steady_clock::now() < end)
                        replacer.Run();
                });
        for (std::thread& thread : threads)
            thread.join();
    }
    int roundCount = 0;
    for (const CReplacer& replacer : replacers)
    {
        EXPECT_EQ(replacer.GetTornCount(), 0);
        roundCount += replacer.GetRoundCount();
    }
    EXPECT_GT(changedCount, 10);
    std::printf("%d rounds, %d times marked\n", roundCount, changedCount.load());
}

TEST(MarkConcurrency, EightThreadsMarkTheSameModelsAndNoneFails)
{
    const CTemporaryFolder folder;
    folder.Write("tex_dxt/000.dds", "");
    constexpr int modelCount = 40;
    for (int i = 0; i < modelCount; ++i)
        folder.Write(
            std::to_string(i) + ".zek",
            CModelBuilder::Build(testsupport::MakeFullModel(16 + i % 11)).GetImage());

    std::atomic<int> failedCount = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread)
        threads.emplace_back(
            [&]
            {
                for (int i = 0; i < modelCount; ++i)
                {
                    const SMarkResult result = Mark(folder.GetPath(std::to_string(i) + ".zek"), {});
                    failedCount += result.outcome == SMarkResult::Failed ? 1 : 0;
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failedCount, 0);
    for (int i = 0; i < modelCount; ++i)
        EXPECT_EQ(
            Mark(folder.GetPath(std::to_string(i) + ".zek"), {}).outcome, SMarkResult::Unchanged);
}
