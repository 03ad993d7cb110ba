pragma Singleton
import QtQuick
import Veltramoor

// Colours, sizes and times that the screens share.
QtObject {
    readonly property color ground: "#333333"
    readonly property color row: "#222222"
    readonly property color rowPressed: "#555555"
    readonly property color raised: "#444444"
    readonly property color edge: "#1a1a1a"
    readonly property color text: "#cccccc"
    readonly property color textStrong: "#ffffff"
    readonly property color accent: "#f0a830"
    readonly property color accentFaint: "#33f0a830"
    readonly property color accentText: "#1a1a1a"
    readonly property color trouble: "#ff7a70"
    readonly property color erase: "#b3261e"
    readonly property color faint: "#9a9a9a"
    readonly property color outline: "#6a6a6a"
    readonly property color off: "#666666"
    readonly property color field: "#2e2e2e"
    readonly property color box: "#808080"
    readonly property color bar: "#000000"
    readonly property color barPlain: "#4a4a4a"
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
    readonly property int motion: App.device.reducedMotion ? 0 : 150
}
