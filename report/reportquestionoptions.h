#pragma once

#include "report/reportquestion.h"

#include <QString>

class QCommandLineParser;

namespace report {

/// Tells `parser` of the options that ask a question.
void declare_question(QCommandLineParser& parser);

/// Reads them into `question`. Returns what is wrong with them, empty when nothing is.
QString read_question(const QCommandLineParser& parser, question& question);

} // namespace report
