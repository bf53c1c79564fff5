#include "radioimage.h"

#include "files/atomicwrite.h"
#include "files/clonefile.h"
#include "model/dialcodec.h"
#include "model/tables.h"
#include "virtualradio.h"

namespace zq::radio {

using zq::model::Outcome;
using zq::model::Result;

namespace {

using files::kChannelLine;
using files::kCloneLineLength;
using files::kDialLine;
using files::kSettingsLine;
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

// The lines of a clone file that passed the program's own checks, onto the memory map; a line that
// is not hexadecimal leaves the memory as it was.
Result StoreCloneImage(const files::CloneReadResult& read, QByteArray& memory) {
    if (!read.result.ok()) return read.result;
    const QStringList& lines = read.image.lines;
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
    image[kModelCodeByte] = char(ModelCodeForVariant(read.image.variant));
    image[kCloneCodeByte] = char(read.image.cloneCodeA ? kCloneCodeA : 0);
    memory = image;
    return Result::done();
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
    return StoreCloneImage(
        files::ParseCloneFile((lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1()),
        memory);
}

QStringList CloneLines(const QByteArray& memory) {
    QStringList lines;
    const bool codeA = quint8(memory[kCloneCodeByte]) == kCloneCodeA;
    lines << zq::model::HeaderLine(VariantForModelCode(quint8(memory[kModelCodeByte])), codeA);
    for (int i = 0; i < 8; ++i)
        lines << BlockHex(memory, kSettingsAddress + i * kBlockSize);
    for (int k = 0; k < zq::model::kDialCount; ++k) {
        QString text = zq::model::UpDateDialData(BlockHex(memory, kDialAddress + k * kBlockSize));
        while (text.size() < kCloneLineLength)
            text += QLatin1Char('Z');
        lines << text;
    }
    for (int i = 0; i < 400; ++i)
        lines << BlockHex(memory, kChannelAddress + i * kBlockSize);
    lines << zq::model::EndLine();
    return lines;
}

Result LoadCloneImage(const QString& path, QByteArray& memory) {
    return StoreCloneImage(files::ReadCloneFile(path), memory);
}

Result SaveCloneImage(const QString& path, const QByteArray& memory) {
    const QByteArray bytes = CloneLines(memory).join(QStringLiteral("\r\n")).toLatin1() + "\r\n";
    if (const QString why = files::WriteFileAtomically(path, bytes); !why.isEmpty())
        return Result::fail(Outcome::FileOpenError, QStringLiteral("cannot write %1: %2").arg(path, why));
    return Result::done();
}

} // namespace zq::radio
