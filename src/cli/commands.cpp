#include "commands.h"

namespace zq::cli {

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands{
        {"detect", "", "Ask the radio for its model and clone code (Auto Select).", detectCommand},
        {"read", "-o FILE.318 [--settings | --memory] [--base FILE.318]",
         "Auto Select, read the radio and save it as a clone file.", readCommand},
        {"write", "FILE.318 [--settings | --memory] [--verify] [--force]",
         "Write a clone file to the radio (refused for another model or clone code unless --force).",
         writeCommand},
        {"verify", "FILE.318 [--settings | --memory]",
         "Read back what writing the clone file sends and list the differences; exit status 3 when any.",
         verifyCommand},
        {"backups", "", "List the kept backups of reads and writes, newest first.", backupsCommand},
        {"dump", "[-o FILE]", "Dump blocks 0000..0FF0 as the service panel does.", dumpCommand},
        {"ports", "",
         "List the port numbers 1..14 with their devices and adapters, and which can be used now.",
         portsCommand},
        {"export", "FILE.318 -o FILE.csv [--format zq318|chirp]",
         "Write the channels of a clone file as CSV, as the window exports them (--format chirp: in "
         "CHIRP's layout).",
         exportCommand},
        {"import", "FILE.csv -o FILE.318 [--base FILE.318] [--format zq318|chirp]",
         "Import CSV channels onto a clone file (or the start-up data) and save the result (--format chirp: "
         "from CHIRP's layout, reporting what the radio cannot hold).",
         importCommand},
        {"check", "FILE.318 [--strict]",
         "Validate a clone file as Open does; prints OK or the fault and its line (--strict: also every "
         "field of every record).",
         checkCommand},
        {"show", "FILE.318", "Print the VFO/CALL/RPT rows and the channels in use as tables.", showCommand},
        {"diff", "A.318 B.318", "List what differs between two clone files; exit status 1 when they differ.",
         diffCommand},
    };
    return commands;
}

const Command* FindCommand(const QString& name) {
    for (const Command& command : Commands())
        if (name == QLatin1String(command.name)) return &command;
    return nullptr;
}

} // namespace zq::cli
