#pragma once
// A virtual radio on a real pseudo-terminal, the serial link opened on its far end, and a document;
// plus sample radio contents and the stores they decode into.
#include "link/seriallink.h"
#include "model/document.h"
#include "model/outcome.h"
#include "model/stores.h"
#include "radio/radiofault.h"
#include "radio/virtualradio.h"

#include <QElapsedTimer>
#include <QList>
#include <gtest/gtest.h>
#include <string>

namespace linktest {

// Varied channels (empty, skipped, named, every tone mode), settings, special records and dial texts,
// in a document and as a radio's blocks.
void FillSampleDocument(zq::model::Document& document);
void FillSampleRadio(zq::radio::VirtualRadio& radio);

// What the radio's channel blocks decode into, on top of `base`.
zq::model::MemoryTable DecodeRadioChannels(const zq::radio::VirtualRadio& radio, zq::model::MemoryTable base);

// Every cell of the row alike, and for channels the in-use flag.
template <class Table> bool SameRow(const Table& a, const Table& b, int row) {
    if constexpr (requires { a.ChannelInUse(row); })
        if (a.ChannelInUse(row) != b.ChannelInUse(row)) return false;
    for (int c = 0; c < Table::columns; ++c)
        if (!(a.cell(row, c) == b.cell(row, c))) return false;
    return true;
}

enum class Transfer { ReadMemory, WriteMemory, ReadSettings, WriteSettings, AutoSelect, Dump };
zq::model::Result RunTransfer(Transfer transfer, zq::link::SerialLink& link, zq::model::Document& document);

// Names parameterised cases after their `name` member.
template <class Case> std::string CaseName(const ::testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

class RadioTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(radio.open().ok());
        link.setPortName(radio.devicePath());
        clock.start();
        QObject::connect(&radio, &zq::radio::VirtualRadio::commandReceived,
                         [this] { arrivals << clock.elapsed(); });
    }
    void addFault(const char* text) { // none for ""
        const std::optional<zq::radio::Fault> fault = zq::radio::ParseFault(QString::fromLatin1(text));
        ASSERT_TRUE(fault || !*text) << text;
        if (fault) radio.addFault(*fault);
    }
    bool endSent() const { return radio.commands().contains(QStringLiteral("KV~E")); }
    // Milliseconds since the test began at which each command reached the radio.
    QList<qint64> arrivals;
    QElapsedTimer clock;
    zq::radio::VirtualRadio radio;
    zq::link::SerialLink link;
    zq::model::Document document;
};

} // namespace linktest
