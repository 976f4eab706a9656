#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/FileSystem.h"

namespace vw {

struct ComparedRoots {
    std::wstring first;
    std::wstring second;
};

/// Two files whose bytes should be equal.
struct FilePair {
    std::wstring first;
    std::wstring second;
    FileInfo expected;  ///< what both were listed with
    /// The two items or copies that the files belong to; they may be the files themselves.
    std::shared_ptr<const ComparedRoots> roots;
};

/// How the comparison of a pair ended.
struct ComparedBytes {
    FilePair pair;
    bool isSame = false;
    std::exception_ptr error;  ///< set when one of the two could not be read
};

/// Compares many pairs of files byte by byte. Opening a small file takes far longer than reading
/// it, so several small pairs are compared at the same time; of large files one pair at a time,
/// because a drive with a moving head would only go back and forth between them. Memory grows
/// neither with the size of files nor with their number.
class ByteComparison {
  public:
    /// Gets the results in the order in which the pairs were added, in the caller's thread.
    using Report = std::function<void(const ComparedBytes&)>;

    /// `yield` is called in the caller's thread now and then; it may throw.
    ByteComparison(FileSystem& files, Report report, std::function<void()> yield);
    ByteComparison(const ByteComparison&) = delete;
    ByteComparison& operator=(const ByteComparison&) = delete;
    /// Gives up what was not compared yet.
    ~ByteComparison();

    /// Adds a pair. Reports earlier ones when too many are waiting.
    void Add(FilePair pair);

    /// Compares and reports what is left.
    void Finish();

  private:
    struct Batch {
        std::vector<ComparedBytes> pairs;
        std::uint64_t bytes = 0;
        bool isDone = false;
    };

    void Queue();
    void ReportFirst();
    void Work();
    void Compare(Batch& batch, const std::function<void()>& yield);

    FileSystem& files_;
    Report report_;
    std::function<void()> yield_;
    std::shared_ptr<Batch> filling_ = std::make_shared<Batch>();
    std::deque<std::shared_ptr<Batch>> unreported_;

    std::mutex mutex_;  ///< guards `waiting_` and every `isDone`
    std::condition_variable changed_;
    std::deque<std::shared_ptr<Batch>> waiting_;  ///< those that no thread has begun to compare
    std::mutex largeFile_;
    std::atomic<bool> isOver_ = false;

    std::vector<std::thread> workers_;
};

}  // namespace vw
