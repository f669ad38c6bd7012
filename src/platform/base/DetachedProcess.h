// Starts another program that goes on by itself. No shell in between, and nothing to wait for.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace DetachedProcess {
/// Starts `program`, a path as it stands, with `arguments`, each one argument whatever stands in it, in a session of
/// its own. Nothing when it runs, else why it doesn't, in the system's words.
std::optional<QString> Start(const QString& program, const QStringList& arguments);
} // namespace DetachedProcess
