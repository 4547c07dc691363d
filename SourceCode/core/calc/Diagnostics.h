#pragma once

#include <QString>
#include <vector>

// What a calculation has to say about its input. Calculations never log and never show a box: they
// append here, and the caller decides once what becomes a log line, a box or the end of the process.

enum class Severity { Info, Debug, Warning, Fatal };

struct Diagnostic {
    Severity severity = Severity::Debug;
    int line = 0;  ///< 1-based line of the input, 0 when no line is meant
    QString key;   ///< "Group/Key" of the language table, empty for a literal text
    QString text;  ///< literal text, or what is put behind the text of `key`
};

struct Diagnostics {
    std::vector<Diagnostic> entries;

    void add(Severity severity, QString text, int line = 0) {
        entries.push_back({severity, line, {}, std::move(text)});
    }
    void addKey(Severity severity, QString key, QString text = {}, int line = 0) {
        entries.push_back({severity, line, std::move(key), std::move(text)});
    }
    [[nodiscard]] bool has(Severity severity) const {
        for (const Diagnostic& entry : entries) {
            if (entry.severity == severity)
                return true;
        }
        return false;
    }
};
