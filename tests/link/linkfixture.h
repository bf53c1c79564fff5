#pragma once
// A virtual radio on a pseudo-terminal with the link on its far end, a document, and sample contents.
#include "link/seriallink.h"
#include "model/document.h"
#include "radio/radiofault.h"
#include "radio/virtualradio.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace linktest {

// Varied channels (empty, skipped, named, every tone mode), settings, special records and dial texts,
// in a document and as a radio's blocks.
void FillSampleDocument(zq::model::Document& document);
void FillSampleRadio(zq::radio::VirtualRadio& radio);
zq::model::MemoryTable DecodeRadioChannels(const zq::radio::VirtualRadio& radio, zq::model::MemoryTable base);

template <class Table> bool SameRow(const Table& a, const Table& b, int row) {
    if constexpr (requires { a.ChannelInUse(row); })
        if (a.ChannelInUse(row) != b.ChannelInUse(row)) return false;
    for (int c = 0; c < Table::columns; ++c)
        if (!(a.cell(row, c) == b.cell(row, c))) return false;
    return true;
}

enum class Transfer { ReadMemory, WriteMemory, ReadSettings, WriteSettings, AutoSelect, Dump };
zq::model::Result RunTransfer(Transfer transfer, zq::link::SerialLink& link, zq::model::Document& document);

inline const auto CaseName = [](const auto& info) { return std::string(info.param.name); };

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
    QList<qint64> arrivals; // ms since the test began at which each command reached the radio
    QElapsedTimer clock;
    zq::radio::VirtualRadio radio;
    zq::link::SerialLink link;
    zq::model::Document document;
};

} // namespace linktest
