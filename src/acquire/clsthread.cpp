// SPDX-License-Identifier: MIT
#include "acquire/clsthread.h"

#include <system_error>

namespace sixtrace {

bool ThreadGate::pass() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_open || m_ended; });
    return !m_ended;
}

void ThreadGate::set(bool open) {
    const std::lock_guard lock(m_mutex);
    m_open = open;
    m_changed.notify_all();
}

void ThreadGate::end() {
    const std::lock_guard lock(m_mutex);
    m_ended = true;
    m_changed.notify_all();
}

std::unique_ptr<std::thread> cls_Thread::makeThread(std::function<void()> body) {
    try {
        return std::make_unique<std::thread>(std::move(body));
    } catch (const std::system_error&) {
        return nullptr; // the system has no thread left; Initialize tells the user
    }
}

cls_Thread::~cls_Thread() {
    end();
}

void cls_Thread::end() {
    if (m_thread != nullptr) {
        m_gate->end();
        m_thread->join();
        m_thread.reset();
    }
}

void cls_Thread::Initialize(Routine routine) {
    end();
    m_gate = std::make_shared<ThreadGate>();
    m_thread = m_maker([gate = m_gate, work = std::move(routine)] {
        if (gate->pass()) {
            work(*gate);
        }
    });
    if (m_thread == nullptr) {
        m_complaint("线程创建失败！", "错误");
    }
}

bool cls_Thread::ThreadEnabled() {
    m_running = true;
    return false;
}

void cls_Thread::setThreadEnabled(bool enabled) {
    if (enabled && !m_running) {
        if (m_gate != nullptr) {
            m_gate->set(true);
        }
        m_running = true;
    } else if (m_running) {
        if (m_gate != nullptr) {
            m_gate->set(false);
        }
        m_running = false;
    }
}

} // namespace sixtrace
