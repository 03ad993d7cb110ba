import QtQuick
import QtQuick.Window

Window {
    width: 360
    height: 720
    visible: true
}
