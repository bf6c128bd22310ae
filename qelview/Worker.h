// SPDX-License-Identifier: MIT
// One background thread that runs jobs newest first and hands each result
// back on the main loop, so the window never waits for a file.
#ifndef QELVIEW_WORKER_H
#define QELVIEW_WORKER_H

#include <glibmm/dispatcher.h>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace qelview {

template <class Job, class Result>
class Worker {
public:
    using Run = std::function<Result(const Job&)>;  // on the worker thread
    using Done = std::function<void(Result)>;       // on the main loop

    // Made on the main thread: the dispatcher delivers to its main context.
    Worker(Run run, Done done) : run_(std::move(run)), done_(std::move(done))
    {
        dispatcher_.connect([this] { Deliver(); });
        thread_ = std::thread([this] { Loop(); });
    }

    ~Worker()
    {
        {
            std::lock_guard<std::mutex> guard(lock_);
            stopping_ = true;
        }
        wake_.notify_one();
        thread_.join();
    }

    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    // The job jumps ahead of every job still waiting.
    void Post(Job job)
    {
        {
            std::lock_guard<std::mutex> guard(lock_);
            pending_.push_back(std::move(job));
        }
        wake_.notify_one();
    }

    // Waiting jobs the caller no longer wants (a thumbnail scrolled away).
    template <class Predicate>
    void Drop(Predicate unwanted)
    {
        std::lock_guard<std::mutex> guard(lock_);
        for (auto it = pending_.begin(); it != pending_.end();)
            it = unwanted(*it) ? pending_.erase(it) : it + 1;
    }

    // Nothing waiting, nothing running, nothing undelivered.
    bool Idle()
    {
        std::lock_guard<std::mutex> guard(lock_);
        return pending_.empty() && !busy_ && finished_.empty();
    }

private:
    void Loop()
    {
        std::unique_lock<std::mutex> guard(lock_);
        for (;;) {
            wake_.wait(guard, [this] { return stopping_ || !pending_.empty(); });
            if (stopping_)
                return;
            Job job = std::move(pending_.back());
            pending_.pop_back();
            busy_ = true;
            guard.unlock();
            Result result = run_(job);
            guard.lock();
            busy_ = false;
            finished_.push_back(std::move(result));
            dispatcher_.emit();
        }
    }

    void Deliver()
    {
        std::vector<Result> results;
        {
            std::lock_guard<std::mutex> guard(lock_);
            results.assign(std::make_move_iterator(finished_.begin()),
                           std::make_move_iterator(finished_.end()));
            finished_.clear();
        }
        for (Result& result : results)
            done_(std::move(result));
    }

    Run run_;
    Done done_;
    Glib::Dispatcher dispatcher_;
    std::mutex lock_;
    std::condition_variable wake_;
    std::deque<Job> pending_;
    std::deque<Result> finished_;
    bool busy_ = false;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace qelview

#endif
