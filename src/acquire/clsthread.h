// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace sixtrace {

/// The place where a thread of cls_Thread stops while it is to pause, and learns that it is to end.
class ThreadGate {
public:
    /// Returns at once while the thread may run, waits while it is suspended; false when the thread is to end.
    [[nodiscard]] bool pass();

private:
    friend class cls_Thread;
    void set(bool open);
    void end();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_open = false;
    bool m_ended = false;
};

/// A thread that is made suspended, runs and pauses by one property, and ends with the object. Nothing in the program
/// uses it.
///
/// A standard thread can be neither suspended nor killed from outside. So the routine is handed a gate and has to pass
/// it often: there it pauses while suspended, and there it is told to return when the object goes. The destructor waits
/// for that; a routine that never comes to its gate keeps it waiting.
class cls_Thread {
public:
    using Routine = std::function<void(ThreadGate& gate)>;
    /// Tells the user that no thread could be made: text, title; with the warning mark.
    using Complaint = std::function<void(const char* text, const char* title)>;
    /// Makes the thread; an empty one when it could not. Tests put a failing one in its place.
    using Maker = std::function<std::unique_ptr<std::thread>(std::function<void()> body)>;

    explicit cls_Thread(Complaint complaint, Maker maker = makeThread)
        : m_complaint(std::move(complaint))
        , m_maker(std::move(maker)) {}
    cls_Thread(const cls_Thread&) = delete;
    cls_Thread& operator=(const cls_Thread&) = delete;
    ~cls_Thread();

    /// Makes the thread, suspended. A second call ends the thread of the first.
    void Initialize(Routine routine);

    /// Sets the running flag and gives false, whatever the thread does: nobody may rely on the value.
    [[nodiscard]] bool ThreadEnabled();
    /// True resumes a thread whose flag is clear. Otherwise a set flag suspends it, so that a second true suspends too;
    /// false with a clear flag does nothing.
    void setThreadEnabled(bool enabled);

    /// 0 where no thread could be made.
    [[nodiscard]] std::int32_t handle() const { return m_thread == nullptr ? 0 : 1; }

    [[nodiscard]] static std::unique_ptr<std::thread> makeThread(std::function<void()> body);

private:
    void end();

    Complaint m_complaint;
    Maker m_maker;
    std::shared_ptr<ThreadGate> m_gate;
    std::unique_ptr<std::thread> m_thread;
    bool m_running = false;
};

} // namespace sixtrace
