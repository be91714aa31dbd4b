// What a program written by hand for one question alone needs to give the same answer: every
// object that the view "view.half" includes, with its name, path and reference. For generated
// models only, like tree.xsl beside it, whose rules it follows.
//
//   vex_pugixml load MODEL.xml           reads the document
//   vex_pugixml tree MODEL.xml OUT.xml   reads it and writes the answer

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include <pugixml.hpp>

namespace {

/// In the order in which members are written.
constexpr char const* classes[] = {"folder", "querySubject", "queryItemFolder", "queryItem",
                                   "filter", "calculation",  "shortcut",        "namespace"};

bool isA(pugi::xml_node object, char const* name) {
    return std::strcmp(object.name(), name) == 0;
}

char const* nameOf(pugi::xml_node object) {
    for (pugi::xml_node property = object.child("property"); property;
         property = property.next_sibling("property")) {
        if (std::strcmp(property.attribute("name").value(), "name") == 0 &&
            std::strcmp(property.attribute("locale").value(), "en") == 0) {
            return property.child_value();
        }
    }
    return "";
}

std::string bracketed(char const* name) {
    return std::string("[") + name + ']';
}

class TreeWriter {
public:
    explicit TreeWriter(pugi::xml_node model) : m_model(model) {
        pugi::xml_node const view =
            model.child("securityViews").find_child_by_attribute("securityView", "id", "view.half");
        pugi::xml_node const set = view.find_child_by_attribute("set", "kind", "included");
        for (pugi::xml_node const item : set.children("item")) {
            m_included.insert(item.child_value());
        }
        pugi::xml_node const root = model.child("namespace");
        findSubjects(root, bracketed(nameOf(root)));
    }

    void write(pugi::xml_node result) const {
        pugi::xml_node const root = m_model.child("namespace");
        std::string const name = bracketed(nameOf(root));
        writeMembers(root, element(result, "folder", nameOf(root), name, name), name, name, name,
                     false);
    }

private:
    /// By reference: shortcuts name their targets so.
    void findSubjects(pugi::xml_node in, std::string const& space) {
        for (pugi::xml_node const member : in.children()) {
            if (isA(member, "querySubject")) {
                m_subjects.emplace(space + '.' + bracketed(nameOf(member)), member);
            } else if (isA(member, "namespace")) {
                findSubjects(member, bracketed(nameOf(member)));
            } else if (isA(member, "folder")) {
                findSubjects(member, space);
            }
        }
    }

    static pugi::xml_node element(pugi::xml_node into, char const* tag, char const* name,
                                  std::string const& path, std::string const& reference) {
        pugi::xml_node made = into.append_child(tag);
        made.append_attribute("name").set_value(name);
        made.append_attribute("_path").set_value(path.c_str());
        made.append_attribute("_ref").set_value(reference.c_str());
        return made;
    }

    /// `space` is the reference of the nearest namespace of the document, `outer` that of
    /// what the members are written in.
    void writeMembers(pugi::xml_node of, pugi::xml_node into, std::string const& path,
                      std::string const& outer, std::string const& space, bool all) const {
        for (char const* const cls : classes) {
            for (pugi::xml_node member = of.child(cls); member; member = member.next_sibling(cls)) {
                if (isA(member, "shortcut")) {
                    writeShortcut(member, into, path, space);
                } else {
                    writeMember(member, into, path, outer, space, all);
                }
            }
        }
    }

    void writeMember(pugi::xml_node member, pugi::xml_node into, std::string const& above,
                     std::string const& outer, std::string const& space, bool all) const {
        char const* const name = nameOf(member);
        bool const isNamespace = isA(member, "namespace");
        bool const isFolder = isA(member, "folder") || isA(member, "queryItemFolder");
        std::string const path = above + '.' + bracketed(name);
        std::string const reference = isNamespace ? bracketed(name)
                                      : isFolder  ? outer
                                                  : outer + '.' + bracketed(name);
        bool const isSeen = all || m_included.contains(member.attribute("id").value());
        pugi::xml_node const inner =
            isSeen ? element(into, isNamespace ? "folder" : member.name(), name, path, reference)
                   : into;
        writeMembers(member, inner, path, reference, isNamespace ? reference : space, all);
    }

    /// Stands as its target under its own name; no view restricts what is in it.
    void writeShortcut(pugi::xml_node shortcut, pugi::xml_node into, std::string const& above,
                       std::string const& space) const {
        char const* const name = nameOf(shortcut);
        std::string const path = above + '.' + bracketed(name);
        pugi::xml_node const made = element(into, "querySubject", name, path, space);
        auto const target = m_subjects.find(shortcut.attribute("refobj").value());
        if (target != m_subjects.end()) {
            writeMembers(target->second, made, path, space, space, true);
        }
    }

    pugi::xml_node m_model;
    std::unordered_set<std::string_view> m_included; // the texts of the model's document
    std::unordered_map<std::string, pugi::xml_node> m_subjects;
};

bool writeTree(pugi::xml_document const& model, char const* file) {
    pugi::xml_document response;
    TreeWriter(model.child("model"))
        .write(response.append_child("Response").append_child("Result"));
    return response.save_file(file, "", pugi::format_raw | pugi::format_no_declaration);
}

} // namespace

int main(int count, char** words) {
    std::string_view const command = count > 1 ? words[1] : "";
    if (!(command == "load" && count == 3) && !(command == "tree" && count == 4)) {
        std::fputs("usage: vex_pugixml load MODEL.xml | vex_pugixml tree MODEL.xml OUT.xml\n",
                   stderr);
        return 2;
    }
    pugi::xml_document model;
    pugi::xml_parse_result const read = model.load_file(words[2]);
    if (!read) {
        std::fprintf(stderr, "%s: %s\n", words[2], read.description());
        return EXIT_FAILURE;
    }
    if (command == "tree" && !writeTree(model, words[3])) {
        std::perror(words[3]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
