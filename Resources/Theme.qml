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
    readonly property color trouble: "#ff7a70"

    readonly property string fontFamily: "Liberation Sans"
    readonly property int touchTarget: 44
    readonly property int formWidth: 480
    readonly property int motion: App.device.reducedMotion ? 0 : 150
}
