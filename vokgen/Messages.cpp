#include "vokgen/Messages.h"

#include <array>

namespace VokGen {
namespace {

struct Row {
   Message message;
   std::string_view name;
   std::string_view text;
};

constexpr auto table = std::to_array< Row >( {
      // Characters and tokens
      { Message::badCharacter, "badCharacter",
            "{0} does not belong here; expected a name, a number, a text in quotes or a symbol "
            "of the language" },
      { Message::badCharacterInComment, "badCharacterInComment",
            "{0} does not belong in a comment; expected UTF-8 text without control characters" },
      { Message::badCharacterInText, "badCharacterInText",
            "{0} does not belong in a text; write the bytes as \\xHH" },
      { Message::blockComment, "blockComment",
            "'/*' starts a block comment, which the language does not have; write '//' on each "
            "line" },
      { Message::badNumber, "badNumber",
            "'{0}' is no number; expected decimal digits, or a number such as 1.5" },
      { Message::leadingZero, "leadingZero",
            "'{0}' starts with a zero; write numbers in decimal without leading zeros" },
      { Message::numberTooLarge, "numberTooLarge",
            "{0} is beyond 64 bits; the largest number is 18446744073709551615" },
      { Message::realOutOfRange, "realOutOfRange", "{0} cannot be held in double precision" },
      { Message::badEscape, "badEscape",
            "'{0}' is no escape; expected \\\", \\\\, \\n, \\t or \\xHH" },
      { Message::unterminatedText, "unterminatedText",
            "this text does not end on its line; expected a closing '\"'" },
      { Message::nameTooLong, "nameTooLong", "this name is too long; the longest is {0} bytes" },
      { Message::fileTooLong, "fileTooLong",
            "this file is too long; only its first {0} words, numbers and symbols have been read" },
      // Grammar
      { Message::expected, "expected", "expected {0}, found {1}" },
      { Message::missingSemicolon, "missingSemicolon", "expected ';' after '{0}'" },
      { Message::openedHere, "openedHere", "{0} is opened here" },
      { Message::tooDeep, "tooDeep",
            "namespaces nest too deeply; at most {0} levels, and {1} bytes of full name" },
      { Message::commentDocumentsNothing, "commentDocumentsNothing",
            "this '///' documents nothing; it stands behind a declaration, on the same line, or "
            "on lines of its own before one ('//' starts an ordinary comment)" },
      { Message::commentInNoColumn, "commentInNoColumn",
            "this '///' is in column {0}; it goes on with the comment above in column {1}, or "
            "documents what follows in column {2}" },
      // Files and modules
      { Message::cannotRead, "cannotRead", "cannot read {0}: {1}" },
      { Message::unknownModule, "unknownModule",
            "no file {0}.vok is found below the import folders{1}" },
      { Message::moduleTwice, "moduleTwice",
            "module {0} is found twice, as {1} and as {2}; module names are unique" },
      { Message::moduleNameDiffers, "moduleNameDiffers",
            "expected 'module {0}', as the file is called, found 'module {1}'" },
      { Message::usedTwice, "usedTwice", "module {0} is used twice" },
      { Message::usedHere, "usedHere", "{0} is used here" },
      { Message::usesItself, "usesItself", "a module cannot use itself: {0}" },
      { Message::usesTooDeep, "usesTooDeep",
            "modules use one another in too long a chain; at most {0}" },
      { Message::moduleNotUsed, "moduleNotUsed",
            "{0} is defined in module {1}, which is not used here; add 'use {1}'" },
      // Declarations and their names
      { Message::missingDocumentation, "missingDocumentation",
            "'{0}' is not documented; add '/// ...' behind it or on the line before it" },
      { Message::declaredTwice, "declaredTwice", "'{0}' is declared twice" },
      { Message::firstDeclaredHere, "firstDeclaredHere", "'{0}' is first declared here" },
      { Message::firstUsedHere, "firstUsedHere", "'{0}' is first used here" },
      { Message::declaredHere, "declaredHere", "'{0}' is declared here" },
      { Message::outsideNamespace, "outsideNamespace",
            "'{0}' stands outside any namespace; put it into 'namespace Name { ... }'" },
      { Message::foreignNamespace, "foreignNamespace",
            "namespace {0} is not for definition files; choose one of your own" },
      { Message::reservedByCpp, "reservedByCpp",
            "'{0}' is a word of C++ and cannot name {1}; choose another name" },
      { Message::generatedForm, "generatedForm",
            "'{0}' cannot name {1}: names such as 'vok...', 'HN_...', '...AttrId', "
            "'...KeyFunktor' and 'FlowOut' belong to generated code" },
      { Message::badUnderscore, "badUnderscore",
            "'{0}' starts or ends with '_' or holds '__'; such names belong to generated code" },
      { Message::namespaceNotCapitalised, "namespaceNotCapitalised",
            "the namespace '{0}' does not start with a capital letter; write '{1}'" },
      { Message::typeNotCapitalised, "typeNotCapitalised",
            "the type '{0}' does not start with a capital letter; write '{1}'" },
      { Message::memberCapitalised, "memberCapitalised",
            "'{0}' starts with a capital letter, as types do; members and parameters start with a "
            "small one" },
      { Message::nameTaken, "nameTaken",
            "{0} would be called '{1}', as {2} is; choose another name" },
      { Message::takenHere, "takenHere", "{0} comes from here" },
      { Message::hidesNamespace, "hidesNamespace",
            "{0} would hide the namespace {1}, in which generated code looks for names; choose "
            "another name" },
      { Message::badHeader, "badHeader",
            "'{0}' is no header; expected a relative path, such as \"Room/Name.h\"" },
      { Message::misplacedMember, "misplacedMember", "{0} does not belong in {1}" },
      { Message::misplacedOption, "misplacedOption", "{0} does not belong to {1} of {2}" },
      { Message::optionTwice, "optionTwice", "{0} is given twice" },
      { Message::modifierTwice, "modifierTwice", "'{0}' is given twice" },
      { Message::parameterTwice, "parameterTwice", "two parameters are called '{0}'" },
      { Message::misplacedBy, "misplacedBy",
            "'by' belongs to maps, 'children' and 'references' only" },
      { Message::tooManyArguments, "tooManyArguments",
            "'{0}' takes too many constructor arguments; at most {1}" },
      { Message::emptyType, "emptyType",
            "{0} without members is of no use; '{1}' declares nothing" },
      // Types by name
      { Message::unknownType, "unknownType", "no type is called '{0}' here{1}" },
      { Message::entityAsValue, "entityAsValue",
            "'{0}' is an entity type, which is not held by value; expected a value type, or "
            "'children', 'child' or 'references' before the entity type" },
      { Message::notAnEntity, "notAnEntity", "expected an entity type; '{0}' is {1}" },
      { Message::constantsAsType, "constantsAsType",
            "'{0}' holds constants only and has no values; expected a value type" },
      { Message::externalAsValue, "externalAsValue",
            "'{0}' is an external type, which only functions take or give; expected a value type" },
      // Enumerations
      { Message::badEnumWidth, "badEnumWidth",
            "'{0}' is no width of an enumeration; expected u8, u16 or u32" },
      { Message::emptyEnum, "emptyEnum",
            "enumeration '{0}' has no enumerators; at least one is needed" },
      { Message::codeTooLarge, "codeTooLarge", "code {0} does not fit {1}; the largest is {2}" },
      { Message::codeTwice, "codeTwice", "code {0} is used twice" },
      { Message::enumWithoutZero, "enumWithoutZero",
            "'{0}' needs a default: {1} has no enumerator of code 0; write '=' and an enumerator "
            "behind its type" },
      { Message::mapOfEnumWithoutZero, "mapOfEnumWithoutZero",
            "map '{0}' has no default for absent keys: {1} has no enumerator of code 0" },
      // Constants and defaults
      { Message::wrongValue, "wrongValue", "expected {0}, found {1}" },
      { Message::doesNotFit, "doesNotFit", "{0} does not fit {1}, which holds 0 to {2}" },
      { Message::severalFields, "severalFields",
            "{0} has not exactly one field, so no value of it can be written; leave out '=' to "
            "get the type's own default" },
      { Message::unknownConstant, "unknownConstant", "'{0}' is not {1} known in {2}{3}" },
      { Message::unknownMember, "unknownMember", "{1} has no '{0}'{2}" },
      { Message::notAConstant, "notAConstant",
            "'{0}' is no constant; expected a number, a constant or an enumerator" },
      { Message::constantOfItself, "constantOfItself",
            "the value of constant '{0}' depends on itself" },
      { Message::constantTooDeep, "constantTooDeep",
            "the value of constant '{0}' depends on a chain of more than {1} constants" },
      { Message::sumOfOther, "sumOfOther",
            "'{0}' is of type {1}; a sum holds numbers, number constants and enumerators" },
      { Message::sumOutOfRange, "sumOutOfRange",
            "{0} is below 0 or beyond 64 bits at some point; reorder or change it" },
      { Message::outsideBounds, "outsideBounds",
            "'{0}' is {1}, which lies outside {2}..{3}, the bounds of {4}; state a value within" },
      { Message::textTooLong, "textTooLong",
            "'{0}' holds {1} bytes, more than the {2} that {3} takes" },
      // Bounds and other options
      { Message::boundsOfOther, "boundsOfOther",
            "'{0}' is of type {1}; only numbers, and values of one field that is a number, have "
            "bounds" },
      { Message::boundsOfEntity, "boundsOfEntity",
            "the bounds of '{0}' are those of an entity's attribute, checked in its mutator "
            "only; write 'on set' behind them" },
      { Message::boundsWithoutMutator, "boundsWithoutMutator",
            "'{0}' is fixed and has no mutator that could check bounds on set; leave out 'on "
            "set'" },
      { Message::boundsInverted, "boundsInverted",
            "the lower bound {0} is greater than the upper bound {1}" },
      { Message::mostOfOther, "mostOfOther",
            "'{0}' is of type {1}; 'max' limits the bytes of a string" },
      { Message::notWider, "notWider", "{0} is no number wider than {1}" },
      { Message::fromWithoutBounds, "fromWithoutBounds",
            "'{0}' is built from a wider number, and so needs bounds that are always checked; "
            "add 'in lower..upper'" },
      { Message::emptyOfOther, "emptyOfOther",
            "'{0}' is of type {1}; only a value of one field, a number called 'value', has a "
            "number that means no value" },
      { Message::counterOfOther, "counterOfOther", "'{0}' is of type {1}; only numbers count" },
      { Message::counterWithBounds, "counterWithBounds",
            "'{0}' cannot have bounds: a counter starts again at 0 after its largest number" },
      { Message::nothingToValidate, "nothingToValidate",
            "{0} has nothing to validate; 'validated' needs a type with bounds that are "
            "'validated'" },
      // Values
      { Message::containsItself, "containsItself", "a value cannot contain itself: {0}" },
      { Message::valueTooDeep, "valueTooDeep",
            "values nest too deeply in '{0}'; at most {1} levels" },
      { Message::valueTooLarge, "valueTooLarge",
            "'{0}' has too many fields, those of its values counted in; at most {1}" },
      { Message::valueWithoutFields, "valueWithoutFields",
            "value '{0}' has neither fields nor collections; for constants alone, write "
            "'constants'" },
      { Message::badValueArgument, "badValueArgument",
            "a constructor argument of a value is 'name : type' alone" },
      { Message::collectionDemands, "collectionDemands",
            "value '{0}' holds the collection '{1}'; write '{2}' after its name" },
      { Message::orderedCollection, "orderedCollection",
            "value '{0}' holds the collection '{1}' and cannot be ordered" },
      { Message::fieldDemands, "fieldDemands",
            "{0} has no {1}, and so '{2}' has none; write '{3}' after its name" },
      { Message::fieldNotOrdered, "fieldNotOrdered",
            "{0} has no order, and so '{1}' can have none; declare it 'ordered', or leave out "
            "'ordered' here" },
      { Message::textByHandAndNone, "textByHandAndNone",
            "a value is either 'untextable' or has its text 'by hand'" },
      { Message::textByHandDemands, "textByHandDemands",
            "value '{0}' has its text by hand, and so needs '{1}'" },
      { Message::constructorsDemand, "constructorsDemand",
            "value '{0}' has its constructors by hand, and {1} could still give it fields that do "
            "not fit together; write {2} after its name" },
      { Message::constructorsOfOneField, "constructorsOfOneField",
            "value '{0}' has no two fields that could fail to fit together; leave out 'by hand "
            "constructors'" },
      { Message::constructorTwice, "constructorTwice", "'{0}' has two constructors from ({1})" },
      { Message::unknownField, "unknownField", "'{1}' has no field '{0}'" },
      { Message::flagOfOther, "flagOfOther",
            "'{0}' is no number field; the bits of flags are those of a field of type u8, u16, "
            "u32 or u64" },
      { Message::bitBeyondWord, "bitBeyondWord",
            "bit {0} is not in '{1}'; the bits of {2} are 0 to {3}" },
      { Message::bitTwice, "bitTwice", "bit {0} of '{1}' is a flag already" },
      // Collections
      { Message::orderedChild, "orderedChild", "a single child has no order; leave out 'ordered'" },
      { Message::keyOfNoValue, "keyOfNoValue",
            "{0} has no fields; the key of a map 'by' a field is a field of its values" },
      { Message::keyNoField, "keyNoField", "'{0}' is no field of {1}{2}" },
      { Message::keyNoArgument, "keyNoArgument",
            "'{0}' is no constructor argument of {1}, and only those are keys{2}" },
      { Message::keyNotConstant, "keyNotConstant",
            "'{0}' of {1} is settable or a reference; a key never changes" },
      { Message::keyNotHashable, "keyNotHashable",
            "{0} has no hash and cannot be the key of a hashed collection" },
      { Message::keyNotOrdered, "keyNotOrdered",
            "{0} has no order and cannot be the key of an ordered collection; declare it "
            "'ordered'" },
      { Message::keyNotTextable, "keyNotTextable", "{0} has no text form, which a key needs" },
      // Entities
      { Message::entityWithoutArguments, "entityWithoutArguments",
            "entity '{0}' has no list of constructor arguments; write '( name )', or '()' for "
            "none" },
      { Message::argumentsOfDerived, "argumentsOfDerived",
            "'{0}' is constructed as its base {1} is; leave out the arguments" },
      { Message::baseOfOtherModule, "baseOfOtherModule",
            "{0} is declared in module {1}; an entity derives from a type of its own module" },
      { Message::derivesFromItself, "derivesFromItself", "entity '{0}' derives from itself" },
      { Message::derivedTooDeep, "derivedTooDeep",
            "entity '{0}' derives in too long a line; at most {1} types" },
      { Message::constructsItself, "constructsItself", "an entity cannot construct itself: {0}" },
      { Message::constructedWithArguments, "constructedWithArguments",
            "{0} takes constructor arguments, and so another one's constructor cannot make it; "
            "leave out 'constructed'" },
      { Message::identityTwice, "identityTwice", "entity '{0}' has two identities" },
      { Message::identityNotConstant, "identityNotConstant",
            "the identity '{0}' cannot be settable or a reference" },
      { Message::identityWithoutText, "identityWithoutText",
            "the identity '{0}' is of type {1}; expected string or a value with stringValue()" },
      { Message::identityNotFromText, "identityNotFromText",
            "the identity '{0}' is of type {1}, which is not built from a text alone; a name has "
            "to lead back to it" },
      { Message::settableReference, "settableReference", "the reference '{0}' cannot be settable" },
      { Message::checksWithoutBounds, "checksWithoutBounds",
            "'{0}' has no bounds that 'checks' could check; add 'in lower..upper on set' to it" },
      { Message::mutatingOutsideEntity, "mutatingOutsideEntity",
            "only functions of entities are 'mutating'" },
      { Message::textOfFunction, "textOfFunction",
            "'{0}' cannot be written as its text: only a function of an entity or of constants "
            "can, which takes nothing, changes nothing and gives a string" },
      // Between types
      { Message::definedInCircle, "definedInCircle",
            "types need one another's definition in a circle: {0}" },
      // The list of errors
      { Message::moreErrors, "moreErrors", "vokgen: {0} more errors are not shown" },
} );

constexpr bool isInOrder()
{
   for ( std::size_t i = 0; i < table.size(); ++i ) {
      if ( static_cast< std::size_t >( table[ i ].message ) != i ) {
         return false;
      }
   }
   return true;
}

static_assert( isInOrder() && table.back().message == Message::moreErrors );

} // namespace

std::size_t messageCount() { return table.size(); }

std::string_view messageText( Message message )
{
   return table[ static_cast< std::size_t >( message ) ].text;
}

std::string_view messageName( Message message )
{
   return table[ static_cast< std::size_t >( message ) ].name;
}

} // namespace VokGen
