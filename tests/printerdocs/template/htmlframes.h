#pragma once

#include <QStringList>

/// The HTML of a receipt, written out.
namespace htmlframes {

inline const QString cell =
    R"(<tr><td colspan="2" align = "left"> <font size = 1>%1</font> </td></tr>)";
inline const QString documentHead =
    R"(<html><head><meta http-equiv="Content-Type" content="text/html; charset=UTF-8"></head>)"
    R"(<body><table width="100%" cellspacing=0 cellpadding=0>)";
inline const QString documentTail = "</table></body></html>";
inline const QString fragmentHead = R"(<p><table width="100%"cellspacing=0 cellpadding=0>)";
inline const QString plainFragmentHead = R"(<p><table width="100%" cellspacing=0 cellpadding=0>)";
inline const QString fragmentTail = "</table></p>";

inline QString cellOf(const QString &text)
{
    return cell.arg(text);
}

inline QString html(const QString &head, const QStringList &rows, const QString &tail)
{
    return (QStringList(head) + rows + QStringList(tail)).join("\n");
}

}  // namespace htmlframes
