// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace sixtrace {

/// Where the routine of a cls_Thread waits while the thread is suspended, and learns that the thread has to end.
class ThreadGate {
public:
    /// Returns true at once while the thread may run, and waits while it is suspended. False when the routine has to
    /// return.
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

/// A thread that starts suspended, is resumed and suspended through one property, and ends with the object. Nothing in
/// the program uses it.
///
/// A standard thread can be neither suspended nor killed from outside. So the routine gets a gate, which it has to pass
/// often: the gate holds it while the thread is suspended, and tells it to return when the object is destroyed. The
/// destructor waits for the routine, and so for ever if the routine never calls the gate.
class cls_Thread {
public:
    using Routine = std::function<void(ThreadGate& gate)>;
    /// Tells the user that no thread could be made, in a box with the warning mark.
    using Complaint = std::function<void(const char* text, const char* title)>;
    /// Makes the thread, or returns null. Tests replace it by one that fails.
    using Maker = std::function<std::unique_ptr<std::thread>(std::function<void()> body)>;

    explicit cls_Thread(Complaint complaint, Maker maker = makeThread)
        : m_complaint(std::move(complaint))
        , m_maker(std::move(maker)) {}
    cls_Thread(const cls_Thread&) = delete;
    cls_Thread& operator=(const cls_Thread&) = delete;
    ~cls_Thread();

    /// Makes the thread, suspended. A second call ends the thread of the first.
    void Initialize(Routine routine);

    /// Sets the running flag and returns false, whatever the thread does. The value tells nothing.
    [[nodiscard]] bool ThreadEnabled();
    /// With the running flag clear: true resumes the thread and sets the flag, false does nothing. With the flag set:
    /// either value suspends the thread and clears the flag.
    void setThreadEnabled(bool enabled);

    /// 1 for a thread, 0 when none could be made.
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
