#include "model/dialcodec.h"

#include <gtest/gtest.h>

using namespace zq::model;

TEST(DialCodec, Records) {
    const std::pair<const char*, const char*> encode[] = {
        {"", "00000000000000000000000000000000"},     {"123#", "3132333F000000000000000000000000"},
        {"b", "3B000000000000000000000000000000"},    {"E", "00000000000000000000000000000000"},
        {"*-0D", "3E40303D000000000000000000000000"},
    };
    for (const auto& [text, record] : encode)
        EXPECT_EQ(MakeDialData(QLatin1String(text)), QLatin1String(record)) << text;
    EXPECT_EQ(MakeDialData(QString(20, QLatin1Char('1'))).size(), 40); // never shortened

    const std::pair<const char*, const char*> decode[] = {
        {"00000000000000000000000000000000", ""},
        {"3132333F000000000000000000000000", "123#"},
        {"31FF4132000000000000000000000000", "12"},
        {"3A3B3C3D3E3F40000000000000000000", "ABCD*#-"},
        {"31", "1"},
        {"zz31", "1"},
    };
    for (const auto& [record, text] : decode)
        EXPECT_EQ(UpDateDialData(QLatin1String(record)), QLatin1String(text)) << record;
}

TEST(DialCodec, KeyFilter) {
    const std::tuple<char, DialKeyAction, char> cases[] = {
        {'1', DialKeyAction::Accept, '1'},   {'#', DialKeyAction::Accept, '#'},
        {'*', DialKeyAction::Accept, '*'},   {'-', DialKeyAction::Accept, '-'},
        {'D', DialKeyAction::Accept, 'D'},   {'c', DialKeyAction::Accept, 'C'},
        {'E', DialKeyAction::Reject, 0},     {'e', DialKeyAction::Reject, 0},
        {' ', DialKeyAction::Reject, 0},     {'\r', DialKeyAction::NextBox, 0},
        {'\b', DialKeyAction::Accept, '\b'},
    };
    for (const auto& [key, action, character] : cases) {
        const DialKeyResult result = FilterDialKey(QLatin1Char(key));
        EXPECT_EQ(result.action, action) << key;
        if (action == DialKeyAction::Accept) {
            EXPECT_EQ(result.character, QLatin1Char(character)) << key;
        }
    }
    EXPECT_EQ(NextDialBox(0), 1);
    EXPECT_EQ(NextDialBox(8), 0);
}
