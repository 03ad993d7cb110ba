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

/// The segment of the stored kind; the first when there is none.
int storedSegment(const ServerInfo& info) {
  const BitClientClass* stored = BitClient::classNamed(info.client().value_or(""));
  return stored != nullptr ? stored->index : 0;
}

}  // namespace

ServerSettingsViewController::ServerSettingsViewController()
    : ViewController(QStringLiteral("ServerSettings.qml")), serverClient_(clientNames()) {
  setTitle(tr("Remote Settings"));
  tabBarItem()->set(tr("Remote Settings"), QStringLiteral("tabbar-settings.png"), 0);
  testButton_.setTitle(tr("Test remote settings"));
  testButton_.setEnabled(false);
  connect(&serverClient_, &SegmentedControl::valueChanged, this,
          &ServerSettingsViewController::chooseClient);
  diagnoseButton_.setTitle(tr("Find out what fails"));
  connect(&diagnosis_, &DiagnosisModel::changed, this,
          [this] { diagnoseButton_.setEnabled(!diagnosis_.isRunning()); });
  connectField(serverAddress_, &serverPort_, &ServerInfo::setAddress, &ServerInfo::address);
  connectField(serverPort_, &serverUser_, &ServerInfo::setPort, &ServerInfo::port);
  connectField(serverUser_, &serverPassword_, &ServerInfo::setUsername, &ServerInfo::username);
  connectField(serverPassword_, nullptr, &ServerInfo::setPassword, &ServerInfo::password);
}

void ServerSettingsViewController::connectField(TextField& field, TextField* next,
                                                bool (ServerInfo::*set)(std::optional<std::string>),
                                                std::optional<std::string> (ServerInfo::*stored)()
                                                    const) {
  connect(&field, &TextField::didBeginEditing, this,
          [this, edited = &field] { currTextField_ = edited; });
  // Not by the store: what was found holds for the text as it was.
  connect(&field, &TextField::changed, this, [this, edited = &field] {
    if (edited->isEditing() && (diagnosis_.count() > 0 || diagnosis_.isRunning())) {
      diagnosis_.forget();
    }
  });
  connect(&field, &TextField::didEndEditing, this, [this, edited = &field, next, set, stored] {
    ServerInfo& info = ServerInfo::sharedInstance();
    if (!(info.*set)(edited->text().toStdString())) {
      edited->setText(text((info.*stored)().value_or("")));
    }
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
  serverClient_.setSelectedSegment(storedSegment(info));
  didSelectClient();
  if (!storedPort.empty()) {
    const bool isStored = info.setPort(storedPort);
    serverPort_.setText(text(isStored ? storedPort : info.port().value_or("")));
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

void ServerSettingsViewController::viewWillDisappear() {
  endEditing();
  if (diagnosis_.isRunning()) {
    diagnosis_.forget();
  }
}

void ServerSettingsViewController::chooseClient() {
  // A tap on the kind that is chosen already must not put a typed port back.
  const std::string chosen = BitClient::getClientByIndex(serverClient_.selectedSegment());
  if (ServerInfo::sharedInstance().client() != chosen) {
    didSelectClient();
    diagnosis_.forget();
  }
}

void ServerSettingsViewController::didSelectClient() {
  ServerInfo& info = ServerInfo::sharedInstance();
  const std::string name = BitClient::getClientByIndex(serverClient_.selectedSegment());
  if (!info.setClient(name)) {
    serverClient_.setSelectedSegment(storedSegment(info));
  }
  const BitClientClass* kind =
      BitClient::classNamed(BitClient::getClientByIndex(serverClient_.selectedSegment()));
  serverDescription_ = text(kind->defaultDescription);
  emit descriptionChanged();
  const bool isStored = kind->name == name && info.setPort(std::string(kind->defaultPort));
  serverPort_.setText(isStored ? text(kind->defaultPort) : text(info.port().value_or("")));
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

void ServerSettingsViewController::diagnose() {
  ServerInfo::sharedInstance().setPassword(serverPassword_.text().toStdString());
  endEditing();
  diagnosis_.begin(shared_from_this());
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
