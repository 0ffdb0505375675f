import QtQuick

// A text of ours or from outside: plain, in any case.
Text {
    textFormat: Text.PlainText
    elide: Text.ElideRight
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
