pragma Singleton
import QtQuick
import Veltramoor

// Colours, sizes and times that the screens share. The second colour of a pair is for a person who
// asks for high contrast. tests/walks/ThemeTest.cpp holds what is written on what to its contrast.
QtObject {
    readonly property bool strong: App.device.highContrast

    readonly property color ground: strong ? "#000000" : "#333333"
    // What a torrent's row is painted with.
    readonly property color row: "#222222"
    readonly property color rowPressed: "#555555"
    readonly property color raised: strong ? "#262626" : "#444444"
    readonly property color edge: strong ? "#000000" : "#1a1a1a"
    readonly property color text: strong ? "#ffffff" : "#cccccc"
    readonly property color textStrong: "#ffffff"
    readonly property color accent: "#f0a830"
    readonly property color accentFaint: "#33f0a830"
    readonly property color accentText: strong ? "#000000" : "#1a1a1a"
    readonly property color trouble: strong ? "#ff9a92" : "#ff7a70"
    readonly property color erase: "#b3261e"
    readonly property color faint: strong ? "#e0e0e0" : "#a3a3a3"
    readonly property color outline: strong ? "#ffffff" : "#6a6a6a"
    // Between parts of one control.
    readonly property color divider: strong ? outline : raised
    readonly property color off: "#666666"
    readonly property color field: strong ? "#000000" : "#2e2e2e"
    readonly property color box: strong ? "#1a1a1a" : "#666666"
    readonly property color thumb: strong ? "#ffffff" : "#808080"
    readonly property color bar: "#000000"
    readonly property color barPlain: strong ? "#262626" : "#4a4a4a"
    // What lies over something else.
    readonly property color shade: "#99000000"
    readonly property color shadeDeep: "#cc000000"
    readonly property color pressed: "#40ffffff"
    readonly property color hovered: "#1affffff"

    readonly property string fontFamily: "Liberation Sans"
    readonly property int touchTarget: 44
    readonly property int barHeight: 44
    readonly property int rowHeight: 37
    readonly property int formWidth: 480
    readonly property int columnWidth: 900
    // The outline of a plate, which else differs from the ground by its colour alone.
    readonly property int plateBorder: strong ? 1 : 0
    readonly property int motion: App.device.reducedMotion ? 0 : 150

    // A font's size for a person who reads `points` at the ordinary size. Rows of lists do without:
    // their places are fixed.
    function scaled(points: real): int { return Math.round(points * App.device.textScale) }
}
