#include "radioimage.h"

#include "files/clonefile.h"
#include "model/dialcodec.h"
#include "model/tables.h"
#include "virtualradio.h"

#include <QFile>
#include <QSaveFile>

namespace zq::radio {

using zq::model::Outcome;
using zq::model::Result;

namespace {

using files::kChannelLine;
using files::kDialLine;
using files::kSettingsLine;
constexpr int kLineCount = files::kCloneFileLines;
constexpr int kLineLength = files::kCloneLineLength;
constexpr int kEndLineIndex = files::kEndLine;
constexpr int kSettingsAddress = 0x00E0;
constexpr int kSpecialAddress = 0x0100;
constexpr int kDialAddress = 0x1F00;
constexpr int kChannelAddress = 0x0200;

QString BlockHex(const QByteArray& memory, int address) {
    return QString::fromLatin1(memory.mid(address, kBlockSize).toHex().toUpper());
}

bool StoreBlock(QByteArray& memory, int address, const QString& digits) {
    if (digits.size() != 2 * kBlockSize) return false;
    const QByteArray bytes = QByteArray::fromHex(digits.toLatin1());
    if (bytes.size() != kBlockSize || bytes.toHex().compare(digits.toLatin1(), Qt::CaseInsensitive) != 0)
        return false;
    memory.replace(address, kBlockSize, bytes);
    return true;
}

} // namespace

int ModelCodeForVariant(int variant) {
    switch (variant) {
    case zq::model::VariantT:
        return kModelCodeT;
    case zq::model::VariantE:
        return kModelCodeE;
    case zq::model::VariantJ:
        return kModelCodeTfh;
    default:
        return 0;
    }
}

int VariantForModelCode(int code) {
    switch (code) {
    case kModelCodeT:
        return zq::model::VariantT;
    case kModelCodeE:
        return zq::model::VariantE;
    case kModelCodeTfh:
        return zq::model::VariantJ;
    default:
        return zq::model::VariantA;
    }
}

Result ApplyCloneLines(const QStringList& lines, QByteArray& memory) {
    if (lines.size() < kLineCount)
        return Result::fail(Outcome::FileOpenError, QStringLiteral("only %1 lines").arg(lines.size()),
                            lines.size());
    for (int i = 0; i < kLineCount; ++i)
        if (lines.at(i).size() != kLineLength)
            return Result::fail(Outcome::DataError, QStringLiteral("line %1 is not 32 characters").arg(i + 1),
                                i);
    int variant = -1;
    bool codeA = false;
    for (int m = 0; m < zq::model::kVariantCount && variant < 0; ++m)
        for (int j = 0; j < 2 && variant < 0; ++j)
            if (lines.at(0) == zq::model::HeaderLine(m, j == 1)) {
                variant = m;
                codeA = j == 1;
            }
    if (variant < 0) return Result::fail(Outcome::DataError, QStringLiteral("unknown header"), 0);
    if (lines.at(kEndLineIndex) != zq::model::EndLine())
        return Result::fail(Outcome::DataError, QStringLiteral("wrong end line"), kEndLineIndex);

    QByteArray image = memory;
    const auto store = [&image](int line, int address, const QString& digits) {
        return StoreBlock(image, address, digits)
                   ? Result::done()
                   : Result::fail(Outcome::DataError,
                                  QStringLiteral("line %1 is not hexadecimal").arg(line + 1), line);
    };
    for (int i = 0; i < 8; ++i)
        if (Result r =
                store(kSettingsLine + i, kSettingsAddress + i * kBlockSize, lines.at(kSettingsLine + i));
            !r.ok())
            return r;
    for (int k = 0; k < zq::model::kDialCount; ++k) {
        QString text = lines.at(kDialLine + k);
        while (text.endsWith(QLatin1Char('Z')))
            text.chop(1);
        const QString record = zq::model::MakeDialData(text).left(2 * kBlockSize);
        if (Result r = store(kDialLine + k, kDialAddress + k * kBlockSize, record); !r.ok()) return r;
    }
    for (int i = 0; i < 400; ++i)
        if (Result r = store(kChannelLine + i, kChannelAddress + i * kBlockSize, lines.at(kChannelLine + i));
            !r.ok())
            return r;
    image[kModelCodeByte] = char(ModelCodeForVariant(variant));
    image[kCloneCodeByte] = char(codeA ? kCloneCodeA : 0);
    memory = image;
    return Result::done();
}

QStringList CloneLines(const QByteArray& memory) {
    QStringList lines;
    const bool codeA = quint8(memory[kCloneCodeByte]) == kCloneCodeA;
    lines << zq::model::HeaderLine(VariantForModelCode(quint8(memory[kModelCodeByte])), codeA);
    for (int i = 0; i < 8; ++i)
        lines << BlockHex(memory, kSettingsAddress + i * kBlockSize);
    for (int k = 0; k < zq::model::kDialCount; ++k) {
        QString text = zq::model::UpDateDialData(BlockHex(memory, kDialAddress + k * kBlockSize));
        while (text.size() < kLineLength)
            text += QLatin1Char('Z');
        lines << text;
    }
    for (int i = 0; i < 400; ++i)
        lines << BlockHex(memory, kChannelAddress + i * kBlockSize);
    lines << zq::model::EndLine();
    return lines;
}

Result LoadCloneImage(const QString& path, QByteArray& memory) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Result::fail(Outcome::FileOpenError, QStringLiteral("cannot open %1").arg(path));
    const QString text = QString::fromLatin1(file.readAll());
    QStringList lines = text.split(QStringLiteral("\r\n"));
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    return ApplyCloneLines(lines, memory);
}

Result SaveCloneImage(const QString& path, const QByteArray& memory) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Result::fail(Outcome::FileOpenError, QStringLiteral("cannot write %1").arg(path));
    file.write(CloneLines(memory).join(QStringLiteral("\r\n")).toLatin1() + "\r\n");
    if (!file.commit())
        return Result::fail(Outcome::FileOpenError, QStringLiteral("cannot write %1").arg(path));
    return Result::done();
}

} // namespace zq::radio
