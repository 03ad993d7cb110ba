#include <fmt/format.h>

#include "demo/Pages.h"
#include "demo/Wording.h"

namespace veltramoor {

std::string settingsPage(const PageContext& context) {
  const DemoAccount& account = *context.account;
  std::string page = pageHead(context, context.say("Settings", "Einstellungen"));
  page += popUnderBlock() + downloadBox();
  page += context.layout == FaultKind::OtherLayout ? "<h2><span>Account</span></h2>\n"
                                                   : "<h2><span>Preferences</span></h2>\n";
  page += popUnderBlock() + sponsoredLink();
  // Label and value stand on one line: clients read them so.
  page += fmt::format(
      "<table class=\"settings\">\n"
      "<tr><td>{}</td><td> {} </td></tr>\n<tr><td>{}</td><td>{}</td></tr>\n",
      context.say("Username:", "Benutzername:"), escapeHtml(account.name),
      context.say("Status:", "Rang:"), account.status);
  page += fmt::format("<tr><td>{}</td><td>{}@mail.example</td></tr>\n",
                      context.say("E-mail:", "E-Mail:"), account.name);
  page += fmt::format("<tr><td>{}</td><td>{}</td></tr>\n</table>\n",
                      context.say("Uploads:", "Uploads:"),
                      context.catalogue.find({.uploader = std::string(account.name)}).size());
  page += downloadBox() + premiumAnchor(context);
  page += fmt::format(
      "<form method=\"post\" action=\"/settings\">\n"
      "<p><label><input type=\"checkbox\" name=\"mail\" checked> {}</label></p>\n"
      "<p><label><input type=\"checkbox\" name=\"list\"> {}</label></p>\n"
      "<p><input type=\"submit\" value=\"{}\"></p>\n</form>\n"
      "<p><a href=\"/user/{}/0/99\">{}</a> &middot; <a href=\"/logout\">{}</a></p>\n",
      context.say("Tell me about comments", "Kommentare melden"),
      context.say("Show single rows", "Einzeilige Liste"), context.say("Save", "Speichern"),
      account.name, context.say("My uploads", "Meine Uploads"), context.say("Log out", "Abmelden"));
  return page + pageFoot(context);
}

std::string loginPage(const PageContext& context, std::string_view problem) {
  std::string page = pageHead(context, context.say("Log in", "Anmelden"));
  page += fmt::format("<h2><span>{}</span></h2>\n", context.say("Log in", "Anmelden"));
  if (!problem.empty()) {
    page += fmt::format("<p class=\"error\">{}</p>\n", escapeHtml(problem));
  }
  page += fmt::format(
      "<form method=\"post\" action=\"/login\" name=\"loginform\">\n"
      "<label>{}<br><input type=\"text\" name=\"username\" autocomplete=\"username\"></label>\n"
      "<label>{}<br><input type=\"password\" name=\"password\" "
      "autocomplete=\"current-password\"></label>\n"
      "<input type=\"hidden\" name=\"act\" value=\"login\">\n"
      "<input type=\"submit\" name=\"submit\" value=\"Login\">\n</form>\n"
      "<p>{}</p>\n",
      context.say("Username", "Benutzername"), context.say("Password", "Passwort"),
      context.say("Try the user demo with the password demo.",
                  "Zum Ausprobieren: Benutzer demo, Passwort demo."));
  return page + pageFoot(context);
}

}  // namespace veltramoor
