// SPDX-License-Identifier: MIT
#pragma once

#include "capture/publicm.h"
#include "platform/binaryfile.h"
#include "platform/dialogs.h"
#include "platform/runtimeerror.h"
#include "platform/ttlink.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstdint>

namespace sixtrace {

inline constexpr int kUsbHeaderSize = 12;
inline constexpr int kUsbBlockSize = 64;
using UsbHeader = std::array<char, kUsbHeaderSize>;

/// The count of data bytes that a header announces: (byte 2 * 256 + byte 1) * 256000 / 1000 + byte 0, with a 16-bit
/// sum and a 32-bit product; error 6 where either overflows. So it is at most 2147583, which bounds what a transfer
/// takes of memory.
[[nodiscard]] Result<std::int32_t> usbLength(const UsbHeader& header);
/// Whether a header announces a bitmap.
[[nodiscard]] bool usbIsBitmap(const UsbHeader& header);

/// Sends "START" and gives the header that comes back; nothing when either fails.
[[nodiscard]] std::optional<UsbHeader> usbStart(TtLink& link);

/// What the sentences for the user are, by language (0 Chinese, otherwise English).
[[nodiscard]] QString usbOpenFailedText(int languageId);
[[nodiscard]] QString usbDataFailedText(int languageId);
[[nodiscard]] QString usbErrorText(const RuntimeError& error);

/// What a transfer by hand shows and asks: the parts of the USB window, by their names.
class UsbForm {
public:
    UsbForm() = default;
    UsbForm(const UsbForm&) = delete;
    UsbForm& operator=(const UsbForm&) = delete;
    virtual ~UsbForm() = default;

    [[nodiscard]] virtual QString Text1() = 0; ///< name of the file
    [[nodiscard]] virtual QString Text2() = 0; ///< path to store to
    virtual void setText1(const QString& name) = 0;
    virtual void setText2(const QString& path) = 0;
    virtual void setText5(std::int32_t received) = 0;
    virtual void setText6(std::int32_t length) = 0;
    virtual void setBarMaximum(std::int32_t blocks) = 0;
    virtual void setBar(std::int32_t block) = 0;
    virtual void setCommand4Enabled(bool enabled) = 0;
    virtual void yield() = 0;         ///< lets waiting events run
    virtual void waitForTimer1() = 0; ///< lets events run until the next tick of Timer1, at most 300 ms
    virtual void unload() = 0;
};

/// The transfer by hand: open, "START", header, blocks of 64 bytes, one file. It owns the busy and cancel flags and the
/// file being written; the window owns it and forwards its two buttons.
class UsbTransfer {
public:
    UsbTransfer(TtLink& link, UsbForm& form, Dialogs& dialogs, publicM& model)
        : m_link(link)
        , m_form(form)
        , m_dialogs(dialogs)
        , m_model(model) {}

    void Command4_Click();
    void CancelButton_Click();

    [[nodiscard]] bool UsbBusy() const { return m_busy; }

private:
    enum class Ending { Done, Failed };
    Result<Ending> exchange();
    Outcome nameBitmap();
    void failed();

    TtLink& m_link;
    UsbForm& m_form;
    Dialogs& m_dialogs;
    publicM& m_model;
    BinaryFile m_file; ///< file number 1
    bool m_busy = false;
    bool m_cancel = false;
};

/// How an automatic transfer ended.
enum class AutoUsbEnding { Done, Failed };

/// The transfer of timed acquisition: the same exchange into `path`, with no window and no pause. On anything but
/// success it has told the user, and timed acquisition has to stop.
[[nodiscard]] AutoUsbEnding getfromUSB(TtLink& link, Dialogs& dialogs, publicM& model, const QString& path);

} // namespace sixtrace
