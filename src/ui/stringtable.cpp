#include "stringtable.h"

#include <QHash>

namespace zq::ui {

namespace {

struct Entry {
    int id;
    const char* text; // UTF-8
};

constexpr Entry kEnglish[] = {
    {1000, "File(&F)"},
    {1001, "New(&N)"},
    {1002, "Open(&O)..."},
    {1003, "Save(&S)"},
    {1004, "Save As(&A)..."},
    {1005, "Print Setup(&U)..."},
    {1006, "Print(&P)..."},
    {1007, "Exit(&X)..."},
    {1008, "Edit(&E)"},
    {1009, "Modify(&M)"},
    {1010, "View(&V)"},
    {1011, "Tool Bar(&T)"},
    {1012, "Tool(&T)"},
    {1013, "COM Port Setup(&C)"},
    {1014, "Help(&H)"},
    {1016, "About(&A)"},
    {1017, "New"},
    {1018, "Open"},
    {1019, "Save"},
    {1020, "Print"},
    {1021, "Help"},
    {1022, "Version"},
    {1100, "Status Bar(&S)"},
    {1200, "Status"},
    {1201, "Import(&I)..."},
    {1202, "Export(&E)..."},
    {1203, "Read(&R)"},
    {1204, "Write(&W)"},
    {1205, "Settings(&S)"},
    {1206, "Memory(&M)"},
    {1207, "ALL(&A)"},
    // the program's own additions
    {1300, "Recover Unsaved Changes"},
    {1301, "The program ended with unsaved changes last time. They were kept in:\r\n%1\r\n\r\n"
           "Open them now? Discard deletes the file; Later keeps it for the next start."},
    {1302, "Open"},
    {1303, "Discard"},
    {1304, "Later"},
    {1305, "Your unsaved changes were kept in:\r\n%1\r\nThe next start offers to open them."},
    {1306, "Your unsaved changes could not be kept: %1"},
    {1400, "User Guide(&G)"},
    {1401, "User Guide"},
    {1402, "The user guide cannot be shown."},
    {1310, "Import CHIRP CSV(&H)..."},
    {1311, "Export CHIRP CSV(&V)..."},
    {1312, "Verify Radio(&V)"},
    {1313, "Open Trace Folder(&T)"},
    {1314, "Verify Radio"},
    {1315, "No differences"},
    {1316, "1 difference between the radio and the window's data:"},
    {1317, "%1 differences between the radio and the window's data:"},
    {1318, "Import CHIRP CSV"},
    {1319, "1 channel imported. Not everything in the file fits the radio:"},
    {1320, "%1 channels imported. Not everything in the file fits the radio:"},
    {1321, "Export CHIRP CSV"},
    {1322, "1 channel exported. The layout has no column for these settings:"},
    {1323, "%1 channels exported. The layout has no column for these settings:"},
    {1324, "The serial traces are kept in\r\n%1"},
    {1325, "No serial trace kept: %1"},
    {1326, "The serial trace is incomplete: %1"},
    {1327, "No backup kept: %1"},
    {1328, "... and %1 more"},
    {1329, "CHIRP CSV Files (*.csv);;All Files (*.*)"},
};

constexpr Entry kJapanese[] = {
    {1000, "ファイル(&F)"},
    {1001, "新規作成(&N)"},
    {1002, "開く(&O)..."},
    {1003, "上書き保存(&S)"},
    {1004, "名前を付けて保存(&A)..."},
    {1005, "印刷設定(&U)..."},
    {1006, "印刷(&P)..."},
    {1007, "終了(&X)"},
    {1008, "編集(&E)"},
    {1009, "変更(&M)"},
    {1010, "表示(&V)"},
    {1011, "ツール バー(&T)"},
    {1012, "ツール(&T)"},
    {1013, "COMポート設定(&C)"},
    {1014, "ヘルプ(&H)"},
    {1015, "目次(&C)"},
    {1016, "バージョン情報(&A)"},
    {1017, "新規作成"},
    {1018, "開く"},
    {1019, "上書き保存"},
    {1020, "印刷"},
    {1021, "ヘルプ"},
    {1022, "バージョン"},
    {1023, "バージョン情報"},
    {1024, "OK"},
    {1025, "システム情報(&S)..."},
    {1026, "警告: このプログラムは著作権法および国際条約により保護されています。"},
    {1027, "システム情報ツールが見つかりません。"},
    {1028, "アプリケーションの説明"},
    {1029, "Web ブラウザ"},
    {1030, "戻る"},
    {1031, "進む"},
    {1032, "中止"},
    {1033, "最新の情報に更新"},
    {1034, "ホーム"},
    {1035, "検索"},
    {1036, "アドレス(&A):"},
    {1037, "移動"},
    {1038, "お気に入り"},
    {1039, "読み込み中..."},
    {1040, "ページを表示できません。"},
    {1041, "閉じる"},
    {1042, "ファイル名を指定して開く"},
    {1043, "完了"},
    {1100, "ステータス バー(&S)"},
    {1200, "状態"},
    {1201, "インポート(&I)..."},
    {1202, "エクスポート(&E)..."},
    {1203, "読み込み(&R)"},
    {1204, "書き込み(&W)"},
    {1205, "設定(&S)"},
    {1206, "メモリ(&M)"},
    {1207, "全て(&A)"},
    {1300, "未保存の変更の復元"},
    {1301, "前回、保存されていない変更を残したままプログラムが終了しました。変更は次のファイルに保管されてい"
           "ます:\r\n"
           "%1\r\n\r\n今すぐ開きますか? 「破棄」はこのファイルを削除し、「後で」は次回の起動まで残します。"},
    {1302, "開く"},
    {1303, "破棄"},
    {1304, "後で"},
    {1305, "保存されていない変更を次のファイルに保管しました:\r\n%1\r\n次回の起動時に開くことができます。"},
    {1306, "保存されていない変更を保管できませんでした: %1"},
    {1400, "ユーザー ガイド(&G)"},
    {1401, "ユーザー ガイド"},
    {1402, "ユーザー ガイドを表示できません。"},
    {1310, "CHIRP CSV インポート(&H)..."},
    {1311, "CHIRP CSV エクスポート(&V)..."},
    {1312, "無線機と照合(&V)"},
    {1313, "トレース フォルダを開く(&T)"},
    {1314, "無線機と照合"},
    {1315, "相違はありません"},
    {1316, "無線機とウィンドウのデータの相違: 1 件"},
    {1317, "無線機とウィンドウのデータの相違: %1 件"},
    {1318, "CHIRP CSV インポート"},
    {1319, "1 チャンネルをインポートしました。ファイルの一部は無線機に収まりません:"},
    {1320, "%1 チャンネルをインポートしました。ファイルの一部は無線機に収まりません:"},
    {1321, "CHIRP CSV エクスポート"},
    {1322, "1 チャンネルをエクスポートしました。次の設定はこの形式に列がありません:"},
    {1323, "%1 チャンネルをエクスポートしました。次の設定はこの形式に列がありません:"},
    {1324, "シリアル トレースの保存先:\r\n%1"},
    {1325, "シリアル トレースを保存できません: %1"},
    {1326, "シリアル トレースが不完全です: %1"},
    {1327, "バックアップを保存できません: %1"},
    {1328, "... ほか %1 件"},
    {1329, "CHIRP CSV ファイル (*.csv);;すべてのファイル (*.*)"},
};

template <size_t N> QHash<int, QString> makeTable(const Entry (&entries)[N]) {
    QHash<int, QString> table;
    for (const Entry& entry : entries)
        table.insert(entry.id, QString::fromUtf8(entry.text));
    return table;
}

} // namespace

Language StringTable::LanguageFor(const QLocale& locale) {
    return locale.language() == QLocale::Japanese ? Language::Japanese : Language::English;
}

std::optional<QString> StringTable::text(int id) const {
    static const QHash<int, QString> english = makeTable(kEnglish);
    static const QHash<int, QString> japanese = makeTable(kJapanese);
    const QHash<int, QString>& table = language_ == Language::Japanese ? japanese : english;
    const auto found = table.constFind(id);
    if (found == table.constEnd()) return std::nullopt;
    return *found;
}

QString StringTable::string(int id) const {
    return text(id).value_or(QString());
}

} // namespace zq::ui
