#include "clonefile.h"

#include "atomicwrite.h"
#include "fieldreader.h"
#include "inputfile.h"
#include "model/channelcodec.h"
#include "model/dialcodec.h"
#include "model/settingscodec.h"
#include "model/tables.h"

#include <QBuffer>
#include <QFile>

namespace zq::files {

using model::Outcome;
using model::Result;

namespace {

constexpr int kSpecialRecords = 3;

QString lineLabel(int line) {
    return QStringLiteral("line %1").arg(line + 1);
}

CloneReadResult readClone(QIODevice& device) {
    CloneReadResult out;
    FieldReader reader(device, false);
    QStringList& lines = out.image.lines;
    lines.reserve(kCloneFileLines);
    QByteArray field;
    for (int index = 0; index < kCloneFileLines; ++index) {
        const FieldReader::Status status = reader.read(field, kCloneLineLength, FieldReader::Overflow::Stop);
        if (status == FieldReader::Status::ReadError) {
            out.result =
                Result::fail(Outcome::FileOpenError,
                             QStringLiteral("%1: %2").arg(lineLabel(index), device.errorString()), index);
            return out;
        }
        if (status == FieldReader::Status::PastEnd) {
            out.result = Result::fail(Outcome::FileOpenError,
                                      QStringLiteral("%1: the file ends after %2 of %3 lines")
                                          .arg(lineLabel(index))
                                          .arg(index)
                                          .arg(kCloneFileLines),
                                      index);
            return out;
        }
        if (field.size() != kCloneLineLength) {
            const int line = reader.fieldLine();
            QString what = field.size() > kCloneLineLength
                               ? QStringLiteral("is longer than 32 characters")
                               : QStringLiteral("has %1 characters, not 32").arg(field.size());
            // Only CR ends a line here, so a line ended by LF alone runs on into the next one: say
            // so, or the length alone would puzzle whoever saved the file with LF line ends.
            if (field.contains('\n'))
                what += QStringLiteral(": it ends in LF alone, and clone files need CR LF line ends");
            out.result =
                Result::fail(Outcome::DataError, QStringLiteral("%1 %2").arg(lineLabel(line), what), line);
            return out;
        }
        lines.append(QString::fromLatin1(field));
    }

    bool matched = false;
    for (int variant = 0; variant < model::kVariantCount && !matched; ++variant) {
        for (int code = 0; code < 2 && !matched; ++code) {
            if (lines[0] == model::HeaderLine(variant, code == 1)) {
                out.image.variant = variant;
                out.image.cloneCodeA = code == 1;
                matched = true;
            }
        }
    }
    if (!matched) {
        out.result = Result::fail(Outcome::DataError,
                                  QStringLiteral("%1: unknown header \"%2\"").arg(lineLabel(0), lines[0]), 0);
        return out;
    }
    out.headerMatched = true;
    if (lines[kEndLine] != model::EndLine()) {
        out.result = Result::fail(
            Outcome::DataError,
            QStringLiteral("%1: not the end line \"%2\"").arg(lineLabel(kEndLine), model::EndLine()),
            kEndLine);
        return out;
    }
    return out;
}

QString stripTrailingZ(QString text) {
    while (text.endsWith(QLatin1Char('Z')))
        text.chop(1);
    return text;
}

// The parts of a document a load replaces are decoded apart, so that a bad record changes nothing.
Result decodeImage(const CloneImage& image, model::Contents& data) {
    data.settingsBlock.halfA = image.lines[kSettingsLine];
    data.settingsBlock.halfB = image.lines[kSettingsLine + 1];
    model::ApplySettingsBlock(data.settingsBlock, data.settings);
    for (int row = 0; row < kSpecialRecords; ++row) {
        const int line = kSpecialLine + 2 * row;
        const model::CodecError error =
            model::DecodeSpecialRecord(data.special, image.lines[line] + image.lines[line + 1], row);
        if (error != model::CodecError::None)
            return Result::fail(Outcome::FileOpenError,
                                QStringLiteral("%1: %2").arg(lineLabel(line), model::CodecErrorText(error)),
                                line);
    }
    for (int dial = 0; dial < model::kDialCount; ++dial)
        data.dialTexts[dial] = stripTrailingZ(image.lines[kDialLine + dial]);
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        const int line = kChannelLine + 2 * channel;
        const model::CodecError error =
            model::DecodeChannelRecord(data.memory, image.lines[line] + image.lines[line + 1], channel);
        if (error != model::CodecError::None)
            return Result::fail(Outcome::FileOpenError,
                                QStringLiteral("%1: channel %2: %3")
                                    .arg(lineLabel(line))
                                    .arg(channel)
                                    .arg(model::CodecErrorText(error)),
                                line);
    }
    return Result::done();
}

void markLoaded(model::Document& document, const QString& path) {
    document.setCurrentFilePath(path);
    document.setDataChanged(false);
}

} // namespace

CloneReadResult ParseCloneFile(const QByteArray& contents) {
    QBuffer buffer;
    buffer.setData(contents);
    buffer.open(QIODevice::ReadOnly);
    return readClone(buffer);
}

CloneReadResult ReadCloneFile(const QString& path) {
    QFile file;
    if (const InputFile input = OpenInputFile(file, path, kCloneFileSizeLimit); !input.ok()) {
        CloneReadResult out;
        out.result = input.refusal(Outcome::FileOpenError);
        return out;
    }
    return readClone(file);
}

QStringList CloneFileLines(model::Document& document) {
    QStringList lines;
    lines.reserve(kCloneFileLines);
    // With no model option selected the last header row is taken.
    const int variant = document.ModelVariant() >= 0 ? document.ModelVariant() : model::VariantA;
    lines.append(model::HeaderLine(variant, document.CloneCodeA()));
    document.buildSettingsBlock();
    lines.append(document.settingsBlock().halfA);
    lines.append(document.settingsBlock().halfB);
    for (int row = 0; row < kSpecialRecords; ++row) {
        lines.append(document.encodeSpecialHalf(row, 0));
        lines.append(document.encodeSpecialHalf(row, 1));
    }
    for (const QString& dial : document.dialTexts()) {
        QString padded = dial;
        while (padded.size() < kCloneLineLength)
            padded.append(QLatin1Char('Z'));
        lines.append(padded);
    }
    for (int channel = 0; channel < model::kChannelCount; ++channel) {
        lines.append(model::EncodeChannelFirstHalf(document.memory(), channel));
        lines.append(model::EncodeChannelSecondHalf(document.memory(), channel));
    }
    lines.append(model::EndLine());
    return lines;
}

QByteArray SerializeCloneFile(model::Document& document) {
    QByteArray bytes;
    for (const QString& line : CloneFileLines(document)) {
        bytes.append(line.toLatin1());
        bytes.append("\r\n");
    }
    return bytes;
}

Result ApplyCloneImage(model::Document& document, const CloneImage& image) {
    if (image.lines.size() != kCloneFileLines)
        return Result::fail(Outcome::FileOpenError,
                            QStringLiteral("the image holds %1 lines").arg(image.lines.size()));
    model::Contents data = document.contents();
    const Result decoded = decodeImage(image, data);
    if (!decoded.ok()) return decoded;
    document.replaceContents(data);
    return Result::done();
}

Result OpenCloneFile(model::Document& document, const QString& path) {
    const CloneReadResult read = ReadCloneFile(path);
    if (!read.result.ok()) return read.result;
    const Result applied = ApplyCloneImage(document, read.image);
    if (!applied.ok()) return applied;
    markLoaded(document, path);
    return Result::done();
}

Result LoadCloneFile(model::Document& document, const QString& path) {
    const CloneReadResult read = ReadCloneFile(path);
    if (read.headerMatched) {
        document.setModelVariant(read.image.variant);
        document.setCloneCodeA(read.image.cloneCodeA);
    }
    if (read.result.outcome == Outcome::FileOpenError)
        return Result::fail(Outcome::Fatal, read.result.detail, read.result.line);
    if (!read.result.ok()) return read.result;
    const Result applied = ApplyCloneImage(document, read.image);
    if (!applied.ok()) return Result::fail(Outcome::Fatal, applied.detail, applied.line);
    markLoaded(document, path);
    return Result::done();
}

Result SaveCloneFile(model::Document& document, const QString& path) {
    const QByteArray bytes = SerializeCloneFile(document);
    if (const QString why = WriteFileAtomically(path, bytes); !why.isEmpty()) {
        return Result::fail(Outcome::FileOpenError, QStringLiteral("%1: %2").arg(path, why));
    }
    markLoaded(document, path);
    return Result::done();
}

void NewDocument(model::Document& document) {
    model::Contents blank = document.contents();
    model::ClearSettingsBlock(blank.settingsBlock);
    model::ApplySettingsBlock(blank.settingsBlock, blank.settings);
    blank.dialTexts.fill(QString());
    model::LoadSpecialDefaults(blank.special, document.ModelVariant());
    for (int row = 0; row < model::kChannelCount; ++row) {
        blank.memory.clearRow(row);
        blank.memory.setChannelInUse(row, false);
    }
    document.replaceContents(blank);
    document.setCurrentFilePath(QString());
    document.setDataChanged(false);
}

QString SavePromptText() {
    return QStringLiteral("Save changes to settings?");
}
QString SavePromptTitle() {
    return QStringLiteral("Save Changes");
}

} // namespace zq::files
