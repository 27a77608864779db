#ifndef VEL_CONSUMER_SUBCLASSES_H
#define VEL_CONSUMER_SUBCLASSES_H

// Subclasses every widget class that offers a protected constructor taking
// its private object, with a private class derived from the library's, and
// runs each one. Returns the number of failed checks (each is reported).
int runSubclassChecks();

#endif // VEL_CONSUMER_SUBCLASSES_H
