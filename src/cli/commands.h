#pragma once
// The verbs of zq318, one function each, listed in one table.
#include "cliutil.h"

#include <QStringList>
#include <vector>

namespace zq::cli {

using CommandFunction = int (*)(const QStringList& arguments, CliContext& context);

struct Command {
    const char* name;
    const char* synopsis; // the arguments, for the usage line
    const char* help;     // one line
    CommandFunction run;
};

const std::vector<Command>& Commands();
const Command* FindCommand(const QString& name);

int exportCommand(const QStringList& arguments, CliContext& context);
int importCommand(const QStringList& arguments, CliContext& context);
int checkCommand(const QStringList& arguments, CliContext& context);
int showCommand(const QStringList& arguments, CliContext& context);
int diffCommand(const QStringList& arguments, CliContext& context);
int detectCommand(const QStringList& arguments, CliContext& context);
int readCommand(const QStringList& arguments, CliContext& context);
int writeCommand(const QStringList& arguments, CliContext& context);
int dumpCommand(const QStringList& arguments, CliContext& context);
int verifyCommand(const QStringList& arguments, CliContext& context);
int backupsCommand(const QStringList& arguments, CliContext& context);
int portsCommand(const QStringList& arguments, CliContext& context);

} // namespace zq::cli
