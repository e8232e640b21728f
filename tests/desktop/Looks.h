// The looks of the windows that tests try: light and dark.
#pragma once

#include <QColor>
#include <QPalette>

namespace kv::desktop::test {

inline QPalette LightLook() {
    QPalette P;
    const QColor Ink(0x20, 0x20, 0x20), Window(0xEF, 0xEF, 0xEF), Faint(0x80, 0x80, 0x80);
    P.setColor(QPalette::Window, Window);
    P.setColor(QPalette::WindowText, Ink);
    P.setColor(QPalette::Base, Qt::white);
    P.setColor(QPalette::AlternateBase, QColor(0xF5, 0xF6, 0xF8));
    P.setColor(QPalette::Text, Ink);
    P.setColor(QPalette::PlaceholderText, Faint);
    P.setColor(QPalette::Button, Window);
    P.setColor(QPalette::ButtonText, Ink);
    P.setColor(QPalette::ToolTipBase, Qt::white);
    P.setColor(QPalette::ToolTipText, Ink);
    P.setColor(QPalette::Highlight, QColor(0x30, 0x6F, 0xC0));
    P.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole Each : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        P.setColor(QPalette::Disabled, Each, QColor(0xA0, 0xA0, 0xA0));
    return P;
}

inline QPalette DarkLook() {
    QPalette P;
    const QColor Ink(0xE4, 0xE4, 0xE4), Window(0x32, 0x34, 0x38), Faint(0x9A, 0x9A, 0x9A);
    P.setColor(QPalette::Window, Window);
    P.setColor(QPalette::WindowText, Ink);
    P.setColor(QPalette::Base, QColor(0x20, 0x22, 0x25));
    P.setColor(QPalette::AlternateBase, QColor(0x28, 0x2A, 0x2E));
    P.setColor(QPalette::Text, Ink);
    P.setColor(QPalette::PlaceholderText, Faint);
    P.setColor(QPalette::Button, Window);
    P.setColor(QPalette::ButtonText, Ink);
    P.setColor(QPalette::Light, QColor(0x50, 0x53, 0x58));
    P.setColor(QPalette::Midlight, QColor(0x42, 0x45, 0x4A));
    P.setColor(QPalette::Mid, QColor(0x26, 0x28, 0x2B));
    P.setColor(QPalette::Dark, QColor(0x1A, 0x1C, 0x1E));
    P.setColor(QPalette::Shadow, QColor(0x10, 0x10, 0x10));
    P.setColor(QPalette::ToolTipBase, Window);
    P.setColor(QPalette::ToolTipText, Ink);
    P.setColor(QPalette::Link, QColor(0x6C, 0xA8, 0xF0));
    P.setColor(QPalette::Highlight, QColor(0x2F, 0x65, 0xB0));
    P.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole Each : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        P.setColor(QPalette::Disabled, Each, QColor(0x78, 0x7A, 0x7E));
    return P;
}

}  // namespace kv::desktop::test
