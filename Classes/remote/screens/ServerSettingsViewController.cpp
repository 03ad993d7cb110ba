#include "remote/screens/ServerSettingsViewController.h"

#include "remote/BitClient.h"
#include "remote/ServerInfo.h"
#include "toolkit/Device.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {
namespace {

QString text(std::string_view value) {
  return QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
}

QStringList clientNames() {
  QStringList names;
  for (const BitClientClass& kind : BitClient::classes()) {
    names.append(text(kind.name));
  }
  return names;
}

}  // namespace

ServerSettingsViewController::ServerSettingsViewController()
    : ViewController(QStringLiteral("ServerSettings.qml")), serverClient_(clientNames()) {
  setTitle(tr("Remote Settings"));
  tabBarItem()->set(tr("Remote Settings"), QStringLiteral("tabbar-settings.png"), 0);
  testButton_.setTitle(tr("Test remote settings"));
  testButton_.setEnabled(false);
  connect(&serverClient_, &SegmentedControl::valueChanged, this,
          &ServerSettingsViewController::didSelectClient);
  connectField(serverAddress_, &serverPort_, [](std::string value) {
    ServerInfo::sharedInstance().setAddress(std::move(value));
  });
  connectField(serverPort_, &serverUser_,
               [](std::string value) { ServerInfo::sharedInstance().setPort(std::move(value)); });
  connectField(serverUser_, &serverPassword_, [](std::string value) {
    ServerInfo::sharedInstance().setUsername(std::move(value));
  });
  connectField(serverPassword_, nullptr, [](std::string value) {
    ServerInfo::sharedInstance().setPassword(std::move(value));
  });
}

void ServerSettingsViewController::connectField(TextField& field, TextField* next,
                                                std::function<void(std::string)> store) {
  connect(&field, &TextField::didBeginEditing, this,
          [this, edited = &field] { currTextField_ = edited; });
  connect(&field, &TextField::didEndEditing, this,
          [this, edited = &field, next, keep = std::move(store)] {
            keep(edited->text().toStdString());
            if (next != nullptr && !focusTaken_ && !leaving_) {
              next->becomeFirstResponder();
            }
          });
  connect(&field, &TextField::shouldReturn, &field, &TextField::resignFirstResponder);
}

void ServerSettingsViewController::viewDidLoad() {
  ServerInfo& info = ServerInfo::sharedInstance();
  const std::string storedPort = info.port().value_or("");
  serverPort_.setText(text(storedPort));
  serverAddress_.setText(text(info.address().value_or("")));
  serverUser_.setText(text(info.username().value_or("")));
  serverPassword_.setText(text(info.password().value_or("")));
  const BitClientClass* stored = BitClient::classNamed(info.client().value_or(""));
  serverClient_.setSelectedSegment(stored != nullptr ? stored->index : 0);
  didSelectClient();
  if (!storedPort.empty()) {
    info.setPort(storedPort);
    serverPort_.setText(text(storedPort));
  }
}

void ServerSettingsViewController::viewWillAppear() {
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(true);
  }
  const Device* device = &Device::sharedInstance();
  connect(device, &Device::keyboardWasShown, this, &ServerSettingsViewController::keyboardWasShown,
          Qt::UniqueConnection);
  connect(device, &Device::keyboardWasHidden, this,
          &ServerSettingsViewController::keyboardWasHidden, Qt::UniqueConnection);
  testButton_.setEnabled(static_cast<bool>(makeTestPage));
}

void ServerSettingsViewController::viewWillDisappear() { endEditing(); }

void ServerSettingsViewController::didSelectClient() {
  ServerInfo& info = ServerInfo::sharedInstance();
  const std::string name = BitClient::getClientByIndex(serverClient_.selectedSegment());
  info.setClient(name);
  const BitClientClass* kind = BitClient::classNamed(name);
  serverDescription_ = text(kind->defaultDescription);
  emit descriptionChanged();
  serverPort_.setText(text(kind->defaultPort));
  info.setPort(serverPort_.text().toStdString());
}

void ServerSettingsViewController::endEditing() {
  leaving_ = true;
  for (TextField* field : {&serverAddress_, &serverPort_, &serverUser_, &serverPassword_}) {
    field->resignFirstResponder();
  }
  leaving_ = false;
}

void ServerSettingsViewController::test() {
  if (!makeTestPage || navigationController() == nullptr) {
    return;
  }
  ServerInfo::sharedInstance().setPassword(serverPassword_.text().toStdString());
  endEditing();
  navigationController()->setNavigationBarHidden(false);
  navigationController()->pushViewController(makeTestPage(*this));
}

void ServerSettingsViewController::cancel() {
  endEditing();
  ViewController::cancel();
}

void ServerSettingsViewController::keyboardWasShown() {
  if (keyboardVisible_) {
    return;
  }
  if (currTextField_ != nullptr) {
    emit scrollToFieldRequested(currTextField_);
  }
  keyboardVisible_ = true;
}

void ServerSettingsViewController::keyboardWasHidden() {
  contentHeight_ = 700;
  emit contentHeightChanged();
  keyboardVisible_ = false;
}

}  // namespace veltramoor
