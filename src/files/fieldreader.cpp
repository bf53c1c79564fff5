#include "fieldreader.h"

namespace zq::files {

namespace {
constexpr qsizetype kChunkSize = 64 * 1024;
}

FieldReader::FieldReader(QIODevice& device, bool lfEndsLine) : device_(device), lfEndsLine_(lfEndsLine) {}

int FieldReader::peek() {
    if (position_ < buffer_.size()) return static_cast<unsigned char>(buffer_[position_]);
    if (failed_) return -1;
    buffer_.resize(kChunkSize);
    const qint64 got = device_.read(buffer_.data(), kChunkSize);
    if (got < 0) failed_ = true;
    buffer_.resize(got > 0 ? got : 0);
    position_ = 0;
    if (got <= 0) return -1;
    return static_cast<unsigned char>(buffer_[0]);
}

void FieldReader::advance() {
    ++position_;
}

bool FieldReader::atEnd() {
    return peek() < 0;
}

void FieldReader::consumeLineEnd() {
    const int c = peek();
    advance();
    ++line_;
    if (c == '\r' && peek() == '\n') advance();
}

FieldReader::Status FieldReader::read(QByteArray& field, qsizetype limit, Overflow overflow) {
    field.clear();
    if (atEnd()) return failed_ ? Status::ReadError : Status::PastEnd;
    while (peek() == ' ' || peek() == '\t')
        advance();
    fieldLine_ = line_;

    auto append = [&](int c) {
        if (field.size() <= limit) field.append(static_cast<char>(c));
        return field.size() <= limit || overflow == Overflow::Discard;
    };

    if (peek() == '"') {
        advance();
        for (int c = peek(); c >= 0 && c != '"' && !isLineEnd(c); c = peek()) {
            if (!append(c)) return Status::Ok;
            advance();
        }
        if (peek() == '"') advance();
        // whatever follows the closing quote up to the delimiter is not part of the field
        for (int c = peek(); c >= 0 && c != ',' && !isLineEnd(c); c = peek())
            advance();
    } else {
        for (int c = peek(); c >= 0 && c != ',' && !isLineEnd(c); c = peek()) {
            if (!append(c)) return Status::Ok;
            advance();
        }
    }
    const int delimiter = peek();
    if (delimiter == ',')
        advance();
    else if (delimiter >= 0)
        consumeLineEnd();
    return failed_ ? Status::ReadError : Status::Ok;
}

} // namespace zq::files
