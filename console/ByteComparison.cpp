#include "console/ByteComparison.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/RuntimeError.h"

namespace vw {
namespace {

constexpr std::size_t kPairsOfABatch = 32;
constexpr std::uint64_t kLargeFile = std::uint64_t{1} << 20;
constexpr std::size_t kMostBatches = 16;
constexpr unsigned kMostWorkers = 3;
// The user may ask to stop while a worker reads a large file.
constexpr std::chrono::milliseconds kPatience{100};

}  // namespace

ByteComparison::ByteComparison(FileSystem& files, Report report, std::function<void()> yield)
    : files_(files), report_(std::move(report)), yield_(std::move(yield)) {}

ByteComparison::~ByteComparison() {
    {
        const std::lock_guard guard(mutex_);
        isOver_ = true;
    }
    changed_.notify_all();
    for (std::thread& worker : workers_) worker.join();
}

void ByteComparison::Add(FilePair pair) {
    filling_->bytes += pair.expected.size;
    filling_->pairs.push_back({.pair = std::move(pair), .isSame = false, .error = nullptr});
    if (filling_->pairs.size() >= kPairsOfABatch || filling_->bytes >= kLargeFile) Queue();
    while (unreported_.size() > kMostBatches) ReportFirst();
}

void ByteComparison::Finish() {
    if (!filling_->pairs.empty()) Queue();
    while (!unreported_.empty()) ReportFirst();
}

void ByteComparison::Queue() {
    {
        const std::lock_guard guard(mutex_);
        waiting_.push_back(filling_);
        unreported_.push_back(std::exchange(filling_, std::make_shared<Batch>()));
    }
    if (workers_.empty()) {
        const unsigned others = std::max(std::thread::hardware_concurrency(), 2U) - 1;
        for (unsigned i = 0; i < std::min(others, kMostWorkers); ++i) {
            workers_.emplace_back([this] { Work(); });
        }
    }
    changed_.notify_one();
}

// Compares itself what no worker has begun, instead of waiting for the workers.
void ByteComparison::ReportFirst() {
    std::unique_lock guard(mutex_);
    const std::shared_ptr<Batch> first = unreported_.front();
    while (!first->isDone) {
        if (waiting_.empty()) {
            changed_.wait_for(guard, kPatience);
            guard.unlock();
            yield_();
            guard.lock();
            continue;
        }
        const std::shared_ptr<Batch> batch = waiting_.front();
        waiting_.pop_front();
        guard.unlock();
        Compare(*batch, yield_);
        guard.lock();
        batch->isDone = true;
    }
    unreported_.pop_front();
    guard.unlock();
    for (const ComparedBytes& pair : first->pairs) {
        yield_();
        report_(pair);
    }
}

void ByteComparison::Work() {
    const auto yield = [this] {
        if (isOver_) Throw(error_number::kCancelled);
    };
    std::unique_lock guard(mutex_);
    for (;;) {
        changed_.wait(guard, [this] { return isOver_ || !waiting_.empty(); });
        if (isOver_) return;
        const std::shared_ptr<Batch> batch = waiting_.front();
        waiting_.pop_front();
        guard.unlock();
        Compare(*batch, yield);
        guard.lock();
        batch->isDone = true;
        changed_.notify_all();
    }
}

void ByteComparison::Compare(Batch& batch, const std::function<void()>& yield) {
    for (ComparedBytes& result : batch.pairs) {
        try {
            yield();
            std::unique_lock<std::mutex> alone(largeFile_, std::defer_lock);
            if (result.pair.expected.size >= kLargeFile) alone.lock();
            result.isSame = files_.HaveSameBytes(result.pair.first, result.pair.second, yield);
        } catch (...) {
            result.error = std::current_exception();
        }
    }
}

}  // namespace vw
