// SPDX-License-Identifier: MIT
// Compares the texts that a language file of any bytes gives to the windows with those of a second, simple reader.
#include "platform/text/profiletext.h"
#include "require.h"

#include <QList>

#include <cstdint>

namespace {

using namespace sixtrace;

struct Caption {
    QString section;
    QString key;
};

/// Keys of a form, of an element of a control array, of a menu and of an entry of a combo box.
const QList<Caption>& captions() {
    static const QList<Caption> all{{QStringLiteral("FrmCom"), QStringLiteral("Caption")},
                                    {QStringLiteral("frmcom"), QStringLiteral("mnuFile")},
                                    {QStringLiteral("FrmCom"), QStringLiteral("Label13")},
                                    {QStringLiteral("FrmComCombo3"), QStringLiteral("0")},
                                    {QString(), QString()}};
    return all;
}

/// The simple reader: the first key of that name in the first section of that name.
QString plainlyRead(QByteArray content, const Caption& caption, const QString& fallback) {
    if (content.startsWith("\xEF\xBB\xBF")) {
        content.remove(0, 3);
    }
    bool inside = false;
    const auto lines = content.split('\n');
    for (const QByteArray& bytes : lines) {
        const QString line = QString::fromUtf8(bytes).trimmed();
        if (line.startsWith(u'[') && line.contains(u']')) {
            if (inside) {
                return fallback;
            }
            inside = line.mid(1, line.indexOf(u']') - 1).trimmed().compare(caption.section, Qt::CaseInsensitive) == 0;
        } else if (inside && !line.startsWith(u';') && line.contains(u'=') &&
                   line.section(u'=', 0, 0).trimmed().compare(caption.key, Qt::CaseInsensitive) == 0) {
            QString value = line.section(u'=', 1).trimmed();
            for (const QChar quote : {u'"', u'\''}) {
                if (value.size() >= 2 && value.startsWith(quote) && value.endsWith(quote)) {
                    value = value.mid(1).chopped(1);
                    break;
                }
            }
            const bool halves = value.size() > kProfileValueLimit && value[kProfileValueLimit - 1].isHighSurrogate();
            value.truncate(halves ? kProfileValueLimit - 1 : kProfileValueLimit);
            return value.isEmpty() ? fallback : value;
        }
    }
    return fallback;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QString fallback = QStringLiteral("of the design");
    const auto content = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const ProfileText texts(content);
    for (const Caption& caption : captions()) {
        const QString text = texts.value(caption.section, caption.key, fallback);
        require(!text.isEmpty() && text.size() <= kProfileValueLimit && text.isValidUtf16());
    }
    // The simple reader takes more time than the other, so each input is compared for one caption only.
    const Caption& caption = captions().at(static_cast<qsizetype>(size) % captions().size());
    require(size > kProfileReadLimit ||
            texts.value(caption.section, caption.key, fallback) == plainlyRead(content, caption, fallback));
    return 0;
}
