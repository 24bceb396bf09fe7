// Validators of an edit: they decide, character by character, what the user
// may type. A typed character that would make the text invalid is dropped.
#ifndef TOLDEKO_GVALIDATOR_H
#define TOLDEKO_GVALIDATOR_H

#include <string>

#include "platform/toldeko/gcharset.h"

class GValidator {
public:
    virtual ~GValidator() = default;
    // Whether `text`, as typed so far, may stand in the edit.
    virtual bool IsValidInput(const std::string& text) const = 0;
};

// Passes only the characters of its set.
class GFilterValidator : public GValidator {
public:
    explicit GFilterValidator(const GCharSet& set) : insieme(set) {}
    bool IsValidInput(const std::string& text) const override;

private:
    GCharSet insieme;
};

// A real number on its way: an optional sign, digits with at most one
// decimal point, then optionally an exponent (e or E, an optional sign,
// digits) once the mantissa has a digit. Blanks and anything else are dropped.
class GDoubleValidator : public GValidator {
public:
    bool IsValidInput(const std::string& text) const override;
};

#endif
