// A shop with two screens, the call and the products, in which the call floats over both.
import QtQuick
import QtQuick.Window
import Corvane

Window {
    id: app
    width: 390; height: 844
    title: "Shop: the agent"
    color: "#f4f2ee"

    property bool isCallOpen: true
    property string report: "Add a product, and the customer sees it."
    property var quantities: ({})

    function tell(what) { return (error) => { report = what + (error ? ": " + error.description : ": done") } }
    function setQuantity(sku, quantity) { quantities = Object.assign({}, quantities, { [sku]: quantity }) }
    function addToCall(product) { AgentContext.addProductToCall(product, tell("Add to call")) }

    component TextButton: Rectangle {
        property alias text: label.text
        property bool isChosen: false
        signal clicked
        width: label.implicitWidth + 24; height: 40; radius: 10
        color: isChosen ? "#0f6b62" : pointer.pressed ? "#d9e8e4" : hover.hovered ? "#eef5f3" : "white"
        border { color: activeFocus ? "#1c70d9" : "#c9c4ba"; width: activeFocus ? 2 : 1 }
        activeFocusOnTab: true
        Keys.onSpacePressed: clicked()
        Accessible.role: Accessible.Button
        Accessible.name: text
        Text { id: label; anchors.centerIn: parent; font.pixelSize: 14; color: isChosen ? "white" : "#1b2530" }
        HoverHandler { id: hover }
        TapHandler { id: pointer; onTapped: parent.clicked() }
    }

    Row {
        id: tabs
        x: 12; y: 12; spacing: 12
        TextButton {
            text: AgentContext.isMinimized ? "Back to the call" : "Call"
            isChosen: app.isCallOpen
            onClicked: AgentContext.isMinimized ? AgentContext.maximizeAgent() : app.isCallOpen = true
        }
        TextButton { text: "Products"; isChosen: !app.isCallOpen; onClicked: app.isCallOpen = false }
    }

    Item {
        anchors { fill: parent; topMargin: 64 }
        AgentScreen.onAgentEvent: (event) => {
            // The call moves to the window by itself, so the products may take the place of its screen.
            if (event.name === "willMinimize") app.isCallOpen = false
            if (event.name === "productUpdateInCart") app.setQuantity(event.data.sku, event.data.quantity)
            if (event.name === "productRemovedFromCart") app.setQuantity(event.sku, 0)
        }

        VelnorAgent {
            anchors.fill: parent
            visible: app.isCallOpen
            region: shop.page; organisationId: "shop-42"; connectId: shop.booking
            minimizedOrigin: VelnorAgent.BottomRight
        }

        ListView {
            anchors { fill: parent; margins: 12 }
            visible: !app.isCallOpen
            spacing: 10
            model: shop.products
            header: Text { width: parent.width; bottomPadding: 10; text: app.report; wrapMode: Text.Wrap; color: "#5a6672" }
            AgentScreen.onRestoreAgent: app.isCallOpen = true
            AgentScreen.bringsAgentToFront: true

            delegate: Rectangle {
                width: ListView.view.width; height: 116; radius: 12
                border.color: "#e2ded6"
                Image { x: 10; y: 10; width: 96; height: 96; source: modelData.picture }
                Column {
                    x: 118; y: 10; width: parent.width - 128; spacing: 4
                    Text { width: parent.width; text: modelData.name; font { pixelSize: 15; bold: true } elide: Text.ElideRight }
                    Text { text: modelData.price + (app.quantities[modelData.sku] > 0 ? ", " + app.quantities[modelData.sku] + " in cart" : ""); color: "#5a6672" }
                    Row {
                        spacing: 8
                        TextButton { text: "To call"; onClicked: app.addToCall(modelData.json) }
                        TextButton { text: "To cart"; onClicked: AgentContext.addProductToCart(modelData.sku, app.tell("Add to cart")) }
                    }
                }
            }
        }
    }
}
