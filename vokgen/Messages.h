// Every message that the stages report, in one table.
#pragma once

#include <cstddef>
#include <string_view>

namespace VokGen {

/// What there is to report. The texts stand beside the names in Messages.cpp.
enum class Message {
   // Characters and tokens
   badCharacter,
   badCharacterInComment,
   badCharacterInText,
   blockComment,
   badNumber,
   leadingZero,
   numberTooLarge,
   realOutOfRange,
   badEscape,
   unterminatedText,
   nameTooLong,
   fileTooLong,
   // Grammar
   expected,
   missingSemicolon,
   openedHere,
   tooDeep,
   commentDocumentsNothing,
   commentInNoColumn,
   // Files and modules
   cannotRead,
   unknownModule,
   moduleTwice,
   moduleNameDiffers,
   usedTwice,
   usedHere,
   usesItself,
   usesTooDeep,
   moduleNotUsed,
   // Declarations and their names
   missingDocumentation,
   declaredTwice,
   firstDeclaredHere,
   firstUsedHere,
   declaredHere,
   outsideNamespace,
   foreignNamespace,
   reservedByCpp,
   generatedForm,
   badUnderscore,
   namespaceNotCapitalised,
   typeNotCapitalised,
   memberCapitalised,
   nameTaken,
   takenHere,
   hidesNamespace,
   badHeader,
   misplacedMember,
   misplacedOption,
   optionTwice,
   modifierTwice,
   parameterTwice,
   misplacedBy,
   tooManyArguments,
   emptyType,
   // Types by name
   unknownType,
   entityAsValue,
   notAnEntity,
   constantsAsType,
   externalAsValue,
   // Enumerations
   badEnumWidth,
   emptyEnum,
   codeTooLarge,
   codeTwice,
   enumWithoutZero,
   mapOfEnumWithoutZero,
   // Constants and defaults
   wrongValue,
   doesNotFit,
   severalFields,
   unknownConstant,
   unknownMember,
   notAConstant,
   constantOfItself,
   constantTooDeep,
   sumOfOther,
   sumOutOfRange,
   outsideBounds,
   textTooLong,
   // Bounds and other options
   boundsOfOther,
   boundsOfEntity,
   boundsWithoutMutator,
   boundsInverted,
   mostOfOther,
   notWider,
   fromWithoutBounds,
   emptyOfOther,
   counterOfOther,
   counterWithBounds,
   nothingToValidate,
   // Values
   containsItself,
   valueTooDeep,
   valueTooLarge,
   valueWithoutFields,
   badValueArgument,
   collectionDemands,
   orderedCollection,
   fieldDemands,
   fieldNotOrdered,
   textByHandAndNone,
   textByHandDemands,
   constructorsDemand,
   constructorsOfOneField,
   constructorTwice,
   unknownField,
   flagOfOther,
   bitBeyondWord,
   bitTwice,
   // Collections
   orderedChild,
   keyOfNoValue,
   keyNoField,
   keyNoArgument,
   keyNotConstant,
   keyNotHashable,
   keyNotOrdered,
   keyNotTextable,
   // Entities
   entityWithoutArguments,
   argumentsOfDerived,
   baseOfOtherModule,
   derivesFromItself,
   derivedTooDeep,
   constructsItself,
   constructedWithArguments,
   identityTwice,
   identityNotConstant,
   identityWithoutText,
   identityNotFromText,
   settableReference,
   checksWithoutBounds,
   mutatingOutsideEntity,
   textOfFunction,
   // Between types
   definedInCircle,
   // The list of errors
   moreErrors
};

/// How many messages there are; each is a Message from 0 up.
std::size_t messageCount();

/// The text of a message, with {0}, {1}, … where its arguments go.
std::string_view messageText( Message message );

/// The name of a message, as it stands in the enumeration.
std::string_view messageName( Message message );

} // namespace VokGen
