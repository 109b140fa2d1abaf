#pragma once

#include <UIlib.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// The public declarations of the toolkit, each used once with its exact signature. A line that does
// not compile is a change that breaks applications.
namespace interface_test {

struct Declaration {
    std::string scope; // the class
    std::string name;
    std::string signature;
    bool hasAddress; // taken across the module boundary; of a virtual one, its place in the table
};

template <class Class, class Signature>
using MemberOf = Signature Class::*;

template <class Pointer>
Declaration Declare(const char* scope, const char* name, const char* signature, Pointer pointer)
{
    const Pointer volatile kept = pointer;
    return {scope, name, signature, kept != nullptr};
}

inline std::vector<Declaration> Join(std::initializer_list<std::vector<Declaration>> lists)
{
    std::vector<Declaration> all;
    for (const auto& list : lists)
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

// `scope` is the class, or a class derived from it that may name protected members.
#define OPERATION(class_name, scope, name, ...)                                                    \
    Declare<MemberOf<class_name, __VA_ARGS__>>(#class_name, #name, #__VA_ARGS__, &scope::name)
#define FUNCTION(class_name, scope, name, ...)                                                     \
    Declare<std::add_pointer_t<__VA_ARGS__>>(#class_name, #name, #__VA_ARGS__, &scope::name)
#define MEMBER(class_name, scope, name, ...)                                                       \
    Declare<MemberOf<class_name, __VA_ARGS__>>(#class_name, #name, #__VA_ARGS__, &scope::name)

// One function per source.
std::vector<Declaration> Basics();
std::vector<Declaration> Building();
std::vector<Declaration> Combos();
std::vector<Declaration> Controls();
std::vector<Declaration> Drawing();
std::vector<Declaration> Extras();
std::vector<Declaration> Inputs();
std::vector<Declaration> Interfaces();
std::vector<Declaration> Labels();
std::vector<Declaration> Layouts();
std::vector<Declaration> Lists();
std::vector<Declaration> Menus();
std::vector<Declaration> Services();
std::vector<Declaration> Trees();
std::vector<Declaration> Windows();

} // namespace interface_test
